#include "ProjectFixture.h"
#include "ZkDurableFile.h"
#include "ZkProjectStore.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace zk::storage;
using zk::test::projectRecord;
Q_DECLARE_METATYPE(ProjectStore::OpenResult)

namespace {

// Null and empty are the same to a file.
QByteArray hex(const QByteArray &bytes)
{
    return '.' + bytes.toHex();
}

void print(QDataStream &out, const MatteRecord &matte)
{
    out << matte.size;
    if (!matte.isNull())
        out << matte.box << matte.objectPixels << hex(matte.pixels);
}

void print(QDataStream &out, const SegmentationRecord &record)
{
    out << record.businessType << record.previewType << record.overlayColour << record.overlayAlpha
        << record.isInverted << record.nodes.size();
    for (const NodeRecord &node : record.nodes) {
        out << node.frame << node.revision;
        for (const MatteRecord *matte :
             {&node.keep, &node.remove, &node.erase, &node.given, &node.result})
            print(out, *matte);
    }
    for (const TrackedRecord &tracked : record.tracked) {
        out << tracked.frame << tracked.isForward << tracked.confidence << tracked.seed
            << tracked.seedRevision << tracked.serial;
        print(out, tracked.matte);
    }
    for (const ErasingRecord &erasing : record.erasing) {
        out << erasing.selection << erasing.frame << erasing.area << erasing.rect;
        print(out, erasing.matte);
    }
}

// Everything that a project holds, for comparing.
QByteArray contentOf(const ProjectRecord &project)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << project.id << project.origin << project.currentClip;
    for (const MediaRecord &media : project.media)
        out << media.id << media.path << media.relativePath << media.fileSize << media.modified
            << media.size << media.frameRateNum << media.frameRateDen << media.frameCount
            << media.hasAudio << media.isStill << media.isAnimatedGif << media.hasAlpha
            << media.isVariableRate << media.rotation << media.formatSuffix;
    for (const ClipRecord &clip : project.clips) {
        out << clip.id << clip.media << clip.inFrame << clip.frameCount << clip.playhead;
        for (const EffectRecord &effect : clip.effects)
            out << effect.type << hex(effect.slug.toUtf8()) << hex(effect.settings)
                << effect.isEnabled;
        for (const SegmentationRecord &segmentation : clip.segmentations)
            print(out, segmentation);
        for (const MatteRecord &matte : clip.mattes)
            print(out, matte);
        for (const SegmentationRecord &draft : clip.drafts)
            print(out, draft);
        for (const EffectRecord &effect : clip.draftEffects)
            out << effect.slug << hex(effect.settings) << effect.isEnabled;
    }
    return bytes;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("?");
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write a test file");
}

} // namespace

class TestProjectStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void bringsEverythingBack()
    {
        const QString file = path(QString::fromUtf8("für #1 50%?.zkproj"));
        QString error;
        QVERIFY2(ProjectStore::save(file, projectRecord(), &error), qPrintable(error));
        ProjectRecord read;
        QCOMPARE(ProjectStore::load(file, &read, &error), ProjectStore::OpenResult::Opened);
        QCOMPARE(contentOf(read), contentOf(projectRecord()));
        QCOMPARE(read.application, QStringLiteral("1.2.3"));
        QVERIFY(qAbs(read.saved.secsTo(QDateTime::currentDateTimeUtc())) < 60);
        // What shares its bytes is kept once: the mattes with bytes of three segmentations, the applied,
        // the shared and the empty one.
        QCOMPARE(sql(file, {"SELECT count(*) FROM matte"}).toInt(), 3 * 5 + 1 + 1 + 1);
        QCOMPARE(sql(file, {"PRAGMA user_version"}).toInt(), ProjectStore::formatVersion);

        ProjectRecord summary;
        QCOMPARE(ProjectStore::loadSummary(file, &summary, &error),
                 ProjectStore::OpenResult::Opened);
        QCOMPARE(summary.origin, projectRecord().origin);
        QCOMPARE(summary.clips.size(), 2);
        QCOMPARE(allFiles(), QStringList {QFileInfo(file).fileName()});
    }

    void refusesWhatItCannotOpen_data()
    {
        using Result = ProjectStore::OpenResult;
        QTest::addColumn<QByteArray>("bytes"); // null: there is no file
        QTest::addColumn<Result>("result");
        QTest::addColumn<QStringList>("texts");
        const QString file = path(QStringLiteral("good.zkproj"));
        ProjectStore::save(file, projectRecord(), nullptr);
        const QByteArray good = readFile(file);
        QByteArray other = good;
        other.replace(68, 4, "ZkPl");
        sql(file, {"PRAGMA user_version = 7", "UPDATE project SET application = '9.8.7'"});
        const QByteArray newer = readFile(file);
        const auto row = [](const char *name, QByteArray file, Result result, QStringList texts) {
            QTest::newRow(name) << file << result << texts;
        };
        row("missing", {}, Result::Missing, {"exist"});
        row("text", QByteArray(5000, 'x'), Result::Foreign, {"not a"});
        row("empty", "", Result::Damaged, {"damaged"});
        row("other database", other, Result::Foreign, {"not a"});
        row("header", good.left(60), Result::Damaged, {"damaged"});
        row("half", good.left(good.size() / 2), Result::Damaged, {"damaged"});
        row("newer", newer, Result::Newer, {"9.8.7", "format 7", "1.2.3", "up to 1", "Install"});
        row("newer, damaged", newer.left(200), Result::Newer, {"a newer version", "format 7"});
    }
    void refusesWhatItCannotOpen()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(ProjectStore::OpenResult, result);
        QFETCH(QStringList, texts);
        const QString file = path(QStringLiteral("film.zkproj"));
        if (!bytes.isNull())
            writeFile(file, bytes);
        const QStringList before = allFiles();
        ProjectRecord project;
        project.id = QStringLiteral("mine");
        QString error;
        QCOMPARE(ProjectStore::load(file, &project, &error), result);
        QCOMPARE(project.id, QStringLiteral("mine"));
        for (const QString &text : qAsConst(texts))
            QVERIFY2(error.contains(text), qPrintable(error));
        QVERIFY(error.contains(QLatin1String("film.zkproj")));
        QCOMPARE(allFiles(), before);
        QVERIFY(bytes.isNull() || readFile(file) == bytes);
    }

    // A program that knows neither drafts nor what is erased reads all the rest. A part of them is damage.
    void readsFilesWithoutDrafts()
    {
        const QString file = path(QStringLiteral("film.zkproj"));
        QVERIFY(ProjectStore::save(file, projectRecord(), nullptr));
        sql(file, {"DROP TABLE draft_node"});
        ProjectRecord read;
        QCOMPARE(ProjectStore::load(file, &read, nullptr), ProjectStore::OpenResult::Damaged);
        sql(file, {"DROP TABLE erasing"});
        QCOMPARE(ProjectStore::load(file, &read, nullptr), ProjectStore::OpenResult::Damaged);
        sql(file,
            {"DROP TABLE erasing_seal",
             "DROP TABLE draft_effect",
             "DROP TABLE draft_segmentation",
             "DROP TABLE draft_tracked",
             "DROP TABLE draft_seal"});
        QCOMPARE(ProjectStore::load(file, &read, nullptr), ProjectStore::OpenResult::Opened);
        ProjectRecord expected = projectRecord();
        expected.clips[0].drafts.clear();
        expected.clips[0].draftEffects.clear();
        for (SegmentationRecord &segmentation : expected.clips[0].segmentations)
            segmentation.erasing.clear();
        QCOMPARE(contentOf(read), contentOf(expected));
    }

    // Whatever breaks: it opens as it was saved, or not at all.
    void noticesEveryDamage()
    {
        const QString file = path(QStringLiteral("film.zkproj"));
        QVERIFY(ProjectStore::save(file, projectRecord(), nullptr));
        const QByteArray good = readFile(file);
        int refused = 0;
        for (int at = 16; at < good.size(); at += 53) {
            QByteArray bad = good;
            bad[at] = char(bad.at(at) ^ (1 << at % 8));
            writeFile(file, bad);
            ProjectRecord read;
            if (ProjectStore::load(file, &read, nullptr) == ProjectStore::OpenResult::Opened)
                QVERIFY2(contentOf(read) == contentOf(projectRecord()), QByteArray::number(at));
            else
                ++refused;
        }
        QVERIFY(refused > 20);
    }

    void leavesTheOldFileWhenSavingFails()
    {
        QString error;
        QVERIFY(!ProjectStore::save(path(QStringLiteral("gone/film.zkproj")), {}, &error));
        QVERIFY2(error.contains(QLatin1String("gone")), qPrintable(error));
        // A folder in the place of the file.
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("sub")));
        QVERIFY(!ProjectStore::save(path(QStringLiteral("sub")), projectRecord(), &error));
        QCOMPARE(allFiles(), QStringList {QStringLiteral("sub")});
    }

    void leavesTheOldFileOnAFullOrReadOnlyDisk()
    {
        if (QProcess::execute(QStringLiteral("mount"),
                              {"-t", "tmpfs", "-o", "size=256k", "tmpfs", m_folder->path()})
            != 0)
            QSKIP("no file system can be mounted here");
        const QString file = path(QStringLiteral("film.zkproj"));
        const bool isSaved = ProjectStore::save(file, projectRecord(), nullptr);
        const QByteArray before = readFile(file);
        ProjectRecord large = projectRecord();
        large.clips[0].mattes.append(zk::test::matteRecord(8, QByteArray(400000, 'x')));
        QString full;
        QString readOnly;
        const bool isSavedWhenFull = ProjectStore::save(file, large, &full);
        QProcess::execute(QStringLiteral("mount"), {"-o", "remount,ro", m_folder->path()});
        const bool isSavedReadOnly = ProjectStore::save(file, projectRecord(), &readOnly);
        const QByteArray after = readFile(file);
        const QStringList files = allFiles();
        QProcess::execute(QStringLiteral("umount"), {m_folder->path()});
        QVERIFY(isSaved && !isSavedWhenFull && !isSavedReadOnly);
        QVERIFY2(full.contains(QLatin1String("disk is full")), qPrintable(full));
        QVERIFY2(readOnly.contains(QLatin1String("nothing can be written")), qPrintable(readOnly));
        QCOMPARE(after, before);
        QCOMPARE(files, QStringList {QStringLiteral("film.zkproj")});
    }

    void followsLinksAndKeepsPermissions()
    {
        const QString file = path(QStringLiteral("film.zkproj"));
        const QString link = path(QStringLiteral("link.zkproj"));
        QVERIFY(ProjectStore::save(file, {}, nullptr));
        const auto privately = QFile::ReadOwner | QFile::WriteOwner;
        QVERIFY(QFile::setPermissions(file, privately));
        if (!QFile::link(file, link))
            QSKIP("there are no links here");
        QVERIFY(ProjectStore::save(link, projectRecord(), nullptr));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(QFile::permissions(file) & 0x77, QFile::Permissions(privately) & 0x77);
        ProjectRecord read;
        QCOMPARE(ProjectStore::load(file, &read, nullptr), ProjectStore::OpenResult::Opened);
        QCOMPARE(read.id, projectRecord().id);
    }

private:
    QString path(const QString &name)
    {
        if (!m_folder)
            m_folder = std::make_unique<QTemporaryDir>();
        return m_folder->filePath(name);
    }
    QStringList allFiles() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    // The first value of the last statement; invalid when it has none.
    QVariant sql(const QString &file, const QStringList &statements)
    {
        QVariant value;
        {
            auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), file);
            database.setDatabaseName(file);
            database.open();
            QSqlQuery query(database);
            for (const QString &statement : statements)
                value = query.exec(statement) && query.next() ? query.value(0) : QVariant();
        }
        QSqlDatabase::removeDatabase(file);
        return value;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        QCoreApplication application(count, values);
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
        TestProjectStore test;
        return QTest::qExec(&test, count, values);
    });
}
#include "tst_projectstore.moc"
