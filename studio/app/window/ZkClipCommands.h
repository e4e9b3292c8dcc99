#pragma once

#include "ZkMediaImporter.h"

#include <QObject>

class QWidget;

namespace zk::datamodel {
class Project;
class ProjectClip;
} // namespace zk::datamodel

namespace zk::app {

class EditorPage;
class WindowActions;

// What the user does with media and clips.
class ClipCommands : public QObject
{
    Q_OBJECT

public:
    // None of them is owned; all must outlive it.
    ClipCommands(datamodel::Project *project,
                 const WindowActions &actions,
                 EditorPage *page,
                 QWidget *window);

    MediaImporter *importer() { return &m_importer; }
    // Looks into the files in a thread; those that are none are named in one message at the end.
    void import(const ImportRequest &request);
    // What can be done now.
    void refresh();

private:
    void connectActions();
    void chooseFiles();
    void onImported(const ImportResult &result);
    void reportFailures(const QStringList &failures);
    void take(const ImportResult &result);
    void removeMedia();
    void removeClip();
    void moveClip(int places);
    void relink(qint64 media);
    void removeCutout();

    datamodel::Project *const m_project;
    const WindowActions &m_actions;
    EditorPage *const m_page;
    QWidget *const m_window;
    MediaImporter m_importer;
};

} // namespace zk::app
