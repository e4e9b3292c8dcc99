// Catalogues, as a server sends them.
#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZkResourceServerFiles.h"

#include "ZkTestMain.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using zk::datamodel::DownloadError;

class TestCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongOnesChangeNothing_data();
    void wrongOnesChangeNothing();
    void brokenTransferStartsAgain();
    void foldersMakeATree();
    void serverFilesAreBroughtUpToDate();

private:
    static QJsonObject makeItem(const QString &slug);
    static QByteArray catalogue(const QJsonArray &items, const QJsonArray &folders = {});
};

QJsonObject TestCatalogue::makeItem(const QString &slug)
{
    const QJsonObject file {{QStringLiteral("url"), QStringLiteral("packages/x.json")},
                            {QStringLiteral("size"), 10},
                            {QStringLiteral("sha256"), QString(64, QLatin1Char('a'))}};
    return {{QStringLiteral("slug"), slug},
            {QStringLiteral("name"), slug},
            {QStringLiteral("folder"), QStringLiteral("Cutout/subject_smart_cutout_preset")},
            {QStringLiteral("version"), 1},
            {QStringLiteral("package"), file},
            {QStringLiteral("thumbnail"), file}};
}

QByteArray TestCatalogue::catalogue(const QJsonArray &items, const QJsonArray &folders)
{
    return QJsonDocument(QJsonObject {{QStringLiteral("format"), 1},
                                      {QStringLiteral("version"), 1},
                                      {QStringLiteral("folders"), folders},
                                      {QStringLiteral("items"), items}})
        .toJson();
}

void TestCatalogue::wrongOnesChangeNothing_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &json, const char *message) {
        QTest::newRow(name) << json << QString::fromLatin1(message);
    };
    const QByteArray good = catalogue({makeItem(QStringLiteral("new"))});
    const auto changed = [&good](const char *from, const char *to) {
        QByteArray json = good;
        return json.replace(from, to);
    };
    row("empty", QByteArray(), "byte");
    row("cut", good.left(good.size() / 2), "byte");
    row("array", "[]", "format");
    row("format", changed("\"format\": 1", "\"format\": 2"), "format: only 1");
    row("items", changed("\"items\"", "\"things\""), "items: an array");
    row("slug", changed("\"slug\": \"new\"", "\"slug\": \"../../new\""), "items\\[0\\]: slug");
    row("long slug",
        catalogue({makeItem(QString(65, QLatin1Char('a')))}),
        "items\\[0\\]: slug: a text");
    row("twice",
        catalogue({makeItem(QStringLiteral("a")), makeItem(QStringLiteral("a"))}),
        "items\\[1\\]: \"a\" is there twice");
    row("version", changed("\"version\": 1\n        }", "\"version\": 1.5\n        }"), "version");
    row("folder", changed("Cutout/", "Cutout//"), "is no folder");
    row("size", changed("\"size\": 10", "\"size\": 0"), "package: size");
    row("checksum", changed("aaaa\"", "aaaG\""), "package: sha256");
    row("file address", changed("packages/x.json", "file:///etc/passwd"), "no acceptable address");
    row("no host", changed("packages/x.json", "http:///x"), "no acceptable address");
    row("bad folder", catalogue({}, {QStringLiteral("/")}), "folders: ");
}

void TestCatalogue::wrongOnesChangeNothing()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, message);
    TestHttpServer server;
    server.setFile(QStringLiteral("/presets/catalogue.json"), json);
    LibraryFixture fixture(server.url(QStringLiteral("/presets")));
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("own"))});
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("no catalogue: .*") + message));
    QCOMPARE(fixture.refresh(), int(DownloadError::Refused));
    QCOMPARE(fixture.slugs(), QStringList {QStringLiteral("own")});
    QCOMPARE(fixture.files().size(), 2);
}

// Its checksum is not known, so that pieces of two catalogues could not be told from a whole one.
void TestCatalogue::brokenTransferStartsAgain()
{
    const QString path = QStringLiteral("/catalogue.json");
    TestHttpServer server;
    server.setFile(path, catalogue({makeItem(QStringLiteral("new"))}));
    server.setBehaviour(path, TestHttpServer::BreakOnce);
    LibraryFixture fixture(server.url());
    fixture.open();
    QCOMPARE(fixture.refresh(), 0);
    QCOMPARE(server.requests.join(QLatin1Char(',')),
             QStringLiteral("GET /catalogue.json,GET /catalogue.json"));
    QCOMPARE(fixture.slugs(), QStringList {QStringLiteral("new")});
    QVERIFY(fixture.files().isEmpty());
}

void TestCatalogue::foldersMakeATree()
{
    TestHttpServer server;
    QJsonObject item = makeItem(QStringLiteral("deep"));
    item[QStringLiteral("folder")] = QStringLiteral("Cutout/subject_smart_cutout_preset/Neon");
    const QString path = QStringLiteral("/catalogue.json");
    server.setFile(path, catalogue({item}, {QStringLiteral("Other"), QStringLiteral("Cutout")}));
    LibraryFixture fixture(server.url());
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("own"))});
    fixture.log.entries.clear();
    QCOMPARE(fixture.refresh(), 0);
    QCOMPARE(fixture.log.entries.join(QLatin1Char(',')),
             QStringLiteral("before reload,after reload"));
    QCOMPARE(fixture.slugs().join(QLatin1Char(' ')), QStringLiteral("own deep"));
    QCOMPARE(fixture.presets()->medias(false).size(), 1);
    QVERIFY(fixture.folder(QStringLiteral("Neon")) && fixture.folder(QStringLiteral("Other")));

    // An item more in the sub-folder changes what the folder above lists.
    fixture.library().mediaItemManager()->loadFolder(fixture.presets());
    QTRY_COMPARE(fixture.log.count(QStringLiteral("loaded")), 1);
    fixture.log.entries.clear();
    QJsonObject second = item;
    second[QStringLiteral("slug")] = QStringLiteral("deeper");
    server.setFile(path, catalogue({item, second}, {QStringLiteral("Other")}));
    QCOMPARE(fixture.refresh(), 0);
    QCOMPARE(fixture.log.entries.join(QLatin1Char(',')),
             QStringLiteral("adding deeper,added deeper,loaded subject_smart_cutout_preset"));

    server.setFile(path, catalogue({}));
    QCOMPARE(fixture.refresh(), 0);
    QVERIFY(!fixture.folder(QStringLiteral("Neon")) && !fixture.folder(QStringLiteral("Other")));
    QCOMPARE(fixture.slugs(), QStringList {QStringLiteral("own")});
}

void TestCatalogue::serverFilesAreBroughtUpToDate()
{
    QTemporaryDir directory;
    const auto read = [&] {
        QFile file(directory.filePath(QStringLiteral("catalogue.json")));
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                              : QJsonObject();
    };
    const auto write = [&](int layers) {
        return zk::datamodel::writeResourceServerFiles({makeLook(QStringLiteral("a"), 1, layers)},
                                                       directory.path());
    };
    QVERIFY(write(1));
    QCOMPARE(read().value(QStringLiteral("version")).toInt(), 1);
    const auto packageUrl = [&] {
        const QJsonObject item = read().value(QStringLiteral("items")).toArray().first().toObject();
        return item.value(QStringLiteral("package"))
            .toObject()
            .value(QStringLiteral("url"))
            .toString();
    };
    const QString first = packageUrl();
    QVERIFY(write(2));
    QCOMPARE(read().value(QStringLiteral("version")).toInt(), 2);
    QVERIFY(packageUrl() != first);
    // Whoever has the old catalogue still finds its files.
    QVERIFY(QFile::exists(directory.filePath(first)));
    QVERIFY(QFile::exists(directory.filePath(packageUrl())));

    QString error;
    QVERIFY(!zk::datamodel::writeResourceServerFiles(
        {makeLook(QStringLiteral("a"))}, directory.filePath(first), &error));
    QVERIFY(!error.isEmpty());
}

ZK_TEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
