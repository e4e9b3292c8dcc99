#include "EditBench.h"

#include "project/ZkAutosave.h"
#include "project/ZkProject.h"

#include "ZkTestMain.h"

#include <QProcess>
#include <QSignalSpy>

#include <cstdio>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

// A workspace of the clip.
struct Edit
{
    explicit Edit(const ProjectClip *clip)
        : controller(createSmartKeyingEditController())
    {
        qint64 frame = 0;
        if (!controller->initialise(clip->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout))
            qFatal("The clip cannot be edited");
        controller->editClip()->smartKeyingService(ZKSMARTKEYING::SmartCutout)->setEnabled(true);
    }
    ~Edit() { releaseSmartKeyingEditController(controller); }
    ZkStudioTimeline *timeline() const
    {
        return static_cast<ZkStudioTimeline *>(controller->editTimeline());
    }
    IZkSmartKeyingEditController *const controller;
};

// The editor: opens the project, adds a clip, paints on it, says so, and waits to be killed.
int editUntilKilled(const QString &folder, const QString &file, const QString &media)
{
    Project project;
    Autosave autosave(&project, folder);
    QString error;
    if (!file.isEmpty() && !project.open(file, &error))
        return 1;
    ProjectClip *clip = project.addClip(project.importMedia(media, &error));
    autosave.flush();
    Edit edit(clip);
    project.beginEditing(clip, edit.timeline());
    QFile::remove(autosave.file());
    autosave.setInterval(1);
    // Painted, not applied: it is there again by itself.
    if (!edit.controller->setMatte(3, EditClip::instance().matte(3))
        || !QTest::qWaitFor([&] { return QFile::exists(autosave.file()); }, 10000))
        return 1;
    std::printf("ready\n");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

} // namespace

class ZkAutosaveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { folder.emplace(); }

    void recoversAfterACrash_data()
    {
        QTest::addColumn<bool>("hasFile");
        QTest::newRow("of a saved project") << true;
        QTest::newRow("of a new project") << false;
    }
    void recoversAfterACrash()
    {
        QFETCH(bool, hasFile);
        const QString media = EditClip::instance().path();
        const QString file = hasFile ? folder->filePath(QStringLiteral("film.zkproj")) : QString();
        Project project;
        QString error;
        QVERIFY(!hasFile || project.save(file, &error));
        const QString savedId = project.id();

        QProcess editor;
        editor.start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--edit"), store(), file, media});
        QVERIFY(editor.waitForReadyRead(10000));
        const QDir locks(store(), QStringLiteral("*.lock"));
        QFile lock(locks.filePath(locks.entryList().value(0)));
        QVERIFY(lock.open(QIODevice::ReadWrite));
        QVERIFY(lock.setFileTime(QDateTime::currentDateTime().addDays(-1),
                                 QFileDevice::FileModificationTime));
        lock.close();
        QVERIFY(Autosave::recoverable(store()).isEmpty()); // it is alive, however old its lock is
        editor.kill();
        QVERIFY(editor.waitForFinished(10000));

        const QVector<RecoverableProject> found = Autosave::recoverable(store());
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().origin, file);
        QCOMPARE(found.first().clipCount, 1);
        QVERIFY(!found.first().isOlderThanOrigin);
        {
            Autosave autosave(&project, store());
            QVERIFY2(autosave.recover(found.first(), &error), qPrintable(error));
            QVERIFY(project.isDirty() && project.clipCount() == 1 && project.path() == file);
            QCOMPARE(project.id() == savedId, hasFile);
            {
                Edit edit(project.clipAt(0));
                project.beginEditing(project.clipAt(0), edit.timeline());
                QCOMPARE(edit.timeline()->shownService()->segments().matteAt(3),
                         EditClip::instance().matte(3));
                QVERIFY(!project.clipAt(0)->isCutOut());
                project.endEditing(Project::DraftFate::Kept);
            }
            // It is this editor's now, until everything is saved.
            QCOMPARE(autosave.file(), found.first().file);
            QVERIFY(QFile::exists(autosave.file()));
            QVERIFY(Autosave::recoverable(store()).isEmpty());
            QVERIFY(!Autosave(&project, store()).recover(found.first(), &error));
            QVERIFY(!Autosave::discard(found.first()));
            QVERIFY(project.save(folder->filePath(QStringLiteral("film.zkproj")), &error));
            QVERIFY(!QFile::exists(autosave.file()));
        }
        QVERIFY(QDir(store()).isEmpty());
    }

    void writesWhatIsUnsavedAndRemovesIt()
    {
        Project project;
        QString error;
        {
            Autosave autosave(&project, store());
            autosave.setInterval(1);
            QTest::qWait(0);
            QVERIFY(!QFile::exists(autosave.file()));
            project.importMedia(EditClip::instance().path(), &error);
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(autosave.file()), 10000);
            QVERIFY(project.undoRedoService()->undo()); // nothing is unsaved
            QVERIFY(!QFile::exists(autosave.file()));
            QVERIFY(project.undoRedoService()->redo());
            autosave.flush();
            QVERIFY(QFile::exists(autosave.file()));
            autosave.drop();
            QVERIFY(!QFile::exists(autosave.file()));
            project.markModified();
        }
        // Left behind for recovery when the program ends like that.
        const QVector<RecoverableProject> left = Autosave::recoverable(store());
        QCOMPARE(left.size(), 1);
        QVERIFY(Autosave::discard(left.first()));
        QVERIFY(QDir(store()).isEmpty());
    }

    void reportsAFailureOnce()
    {
        Project project;
        Autosave autosave(&project, store());
        QSignalSpy failed(&autosave, &Autosave::failed);
        project.markModified();
        QVERIFY(QDir(autosave.file()).mkpath(QStringLiteral("."))); // in the way
        autosave.flush();
        autosave.flush();
        QCOMPARE(failed.count(), 1);
        QVERIFY(QDir(autosave.file()).removeRecursively());
        autosave.flush();
        QVERIFY(QFileInfo(autosave.file()).isFile());
        autosave.drop();
    }

private:
    QString store() const { return folder->filePath(QStringLiteral("autosave")); }

    std::optional<QTemporaryDir> folder;
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        const QApplication application(count, values);
        const QStringList arguments = QCoreApplication::arguments();
        if (arguments.value(1) == QLatin1String("--edit"))
            return editUntilKilled(arguments.value(2), arguments.value(3), arguments.value(4));
        ZkAutosaveTest test;
        return QTest::qExec(&test, count, values);
    });
}
#include "ZkAutosaveTest.moc"
