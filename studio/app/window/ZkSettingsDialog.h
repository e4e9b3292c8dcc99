#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace zk::app {

class Language;

// What the user can set. Everything is kept when it is accepted; the language shows at once.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    // The language is not owned.
    explicit SettingsDialog(Language *language, QWidget *parent = nullptr);

    void accept() override;

private:
    void fill();

    Language *const m_language;
    QComboBox *m_languages;
    QSpinBox *m_autosave;
    QCheckBox *m_analytics;
};

} // namespace zk::app
