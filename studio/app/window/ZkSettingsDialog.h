#pragma once

#include <QDialog>
#include <QVector>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QSpinBox;

namespace zk::models {
class ModelChoice;
}

namespace zk::app {

class Language;
class ModelField;

// What the user can set. Everything is kept when it is accepted; the language shows at once.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    // Neither language nor models are owned.
    SettingsDialog(Language *language, models::ModelChoice *models, QWidget *parent = nullptr);

    void accept() override;

private:
    void addModels(QFormLayout *form);
    void fill();
    void keepModels() const;
    void fitHeight();

    Language *const m_language;
    models::ModelChoice *const m_models;
    QVector<ModelField *> m_modelFields;
    QComboBox *m_languages;
    QSpinBox *m_autosave;
    QCheckBox *m_analytics;
};

} // namespace zk::app
