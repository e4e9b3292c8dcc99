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
    void writesAndReplaces();
    void failsWithoutTrace();
    void checksums();

private:
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

void TestDurableFile::writesAndReplaces()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("new/ä/file"));
    QString error;
    QVERIFY2(writeDurably(path, "first", &error), qPrintable(error));
    QCOMPARE(read(path), QByteArray("first"));
    QVERIFY(writeDurably(path, "second, longer"));
    QCOMPARE(read(path), QByteArray("second, longer"));
    QCOMPARE(QDir(directory.filePath(QStringLiteral("new/ä"))).entryList(QDir::Files).size(), 1);

    const QString other = directory.filePath(QStringLiteral("other"));
    QVERIFY(moveIntoPlace(path, other));
    QVERIFY(!QFile::exists(path));
    QCOMPARE(read(other), QByteArray("second, longer"));
}

void TestDurableFile::failsWithoutTrace()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("file"));
    QVERIFY(writeDurably(file, "kept"));
    QString error;

    // A file is in the way of the folder; a folder is in the way of the file.
    QVERIFY(!writeDurably(file + QStringLiteral("/below"), "x", &error));
    QVERIFY(!error.isEmpty());
    const QString folder = directory.filePath(QStringLiteral("folder"));
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/sub")));
    error.clear();
    QVERIFY(!writeDurably(folder, "x", &error));
    QVERIFY(!error.isEmpty());

    QVERIFY(!moveIntoPlace(directory.filePath(QStringLiteral("missing")), file, &error));
    QVERIFY(error.contains(QLatin1String("missing")));
    QCOMPARE(read(file), QByteArray("kept"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList {QStringLiteral("file")});
}

void TestDurableFile::checksums()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("file"));
    QVERIFY(writeDurably(path, "abc"));
    const QByteArray known("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    QCOMPARE(sha256OfFile(path), known);
    QCOMPARE(sha256Of("abc"), known);
    QVERIFY(sha256OfFile(directory.filePath(QStringLiteral("missing"))).isEmpty());
}

ZK_TEST_CORE_MAIN(TestDurableFile)
#include "tst_durablefile.moc"
