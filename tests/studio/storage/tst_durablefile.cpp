#include "ZkDurableFile.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace zk::storage;

class TestDurableFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replacesMovesAndFailsWithoutTrace()
    {
        const QString first = path("new/ä/file");
        QVERIFY(writeDurably(first, "first") && writeDurably(first, "abc"));
        QCOMPARE(QDir(path("new/ä")).entryList(QDir::Files).size(), 1);
        const QString file = path("file");
        QVERIFY(moveIntoPlace(first, file));
        QVERIFY(!QFile::exists(first));

        // A file is in the way of the folder; a folder is in the way of the file.
        QString error;
        QVERIFY(!writeDurably(path("file/below"), "x", &error) && !error.isEmpty());
        QVERIFY(QDir().mkpath(path("folder/sub")));
        error.clear();
        QVERIFY(!writeDurably(path("folder"), "x", &error) && !error.isEmpty());
        QVERIFY(!moveIntoPlace(path("missing"), file, &error));
        QVERIFY(error.contains(QLatin1String("missing")));

        const QByteArray known("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
        QCOMPARE(sha256OfFile(file), known);
        QVERIFY(sha256OfFile(path("missing")).isEmpty());
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files).size(), 1);
    }

private:
    QString path(const char *name) const { return m_directory.filePath(QString::fromUtf8(name)); }

    QTemporaryDir m_directory;
};

ZK_TEST_CORE_MAIN(TestDurableFile)
#include "tst_durablefile.moc"
