#pragma once

#include "ZkExportBatch.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class ZkColorToolButton;

namespace zk::datamodel {
class Project;
class ProjectClip;
} // namespace zk::datamodel

namespace zk::app {

// What to export, in which format, and where to. Follows the project, which is not owned and must outlive
// the form.
class ExportForm : public QWidget
{
    Q_OBJECT

public:
    explicit ExportForm(datamodel::Project *project, QWidget *parent = nullptr);

    // Whether everything is given that an export needs.
    bool isComplete() const;
    // One for each clip that is chosen, as it is now.
    QVector<ExportItem> items() const;
    // What is there already of what would be written: files, or folders that are not empty.
    static QStringList existing(const QVector<ExportItem> &items);
    QString target() const;
    // What will be written, in a few words.
    QString summary() const;

Q_SIGNALS:
    void changed();

private:
    enum Background {
        BlackBackground,
        ColourBackground,
        PictureBackground,
    };

    void setUpChoices();
    void listClips(qint64 chosen);
    void followProject();
    QWidget *createTargetRow();
    QWidget *createBackgroundRow();
    void connectChoices();
    void refresh();
    void proposeTarget();
    void takeSuffix();
    void chooseTarget();
    void chooseColour();
    void choosePicture();
    const ExportFormat &format() const;
    QVector<const datamodel::ProjectClip *> chosenClips() const;
    QString outputFor(int index, int count) const;
    ExportSettings settingsFor(const QString &output) const;

    datamodel::Project *const m_project;
    const QVector<ExportFormat> m_formats;
    QString m_picture; // behind formats without transparency
    QComboBox *m_clip;
    QComboBox *m_format;
    QLineEdit *m_target;
    QCheckBox *m_matteOnly;
    QComboBox *m_background = nullptr;
    ZkColorToolButton *m_colour = nullptr;
    QPushButton *m_pictureButton = nullptr;
};

} // namespace zk::app
