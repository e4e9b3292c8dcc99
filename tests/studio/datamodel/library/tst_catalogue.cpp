// Catalogues, as a server sends them.
#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZkResourceServerFiles.h"

#include "ZkTestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using zk::datamodel::DownloadError;
using ZKVBLMODEL::DownloadPreset;

namespace {

const QString Path = QStringLiteral("/catalogue.json");

QJsonObject makeItem(const QString &slug, const QString &subFolder = QString())
{
    const QJsonObject file {
        {"url", "packages/x.json"}, {"size", 10}, {"sha256", QString(64, QLatin1Char('a'))}};
    return {{"slug", slug},
            {"name", slug},
            {"folder", "Cutout/subject_smart_cutout_preset" + subFolder},
            {"version", 1},
            {"package", file},
            {"thumbnail", file}};
}

QByteArray catalogue(const QJsonArray &items, const QJsonArray &folders = {})
{
    return QJsonDocument(
               QJsonObject {{"format", 1}, {"version", 1}, {"folders", folders}, {"items", items}})
        .toJson();
}

} // namespace

class TestCatalogue : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestHttpServer> m_server;
    std::unique_ptr<LibraryFixture> m_fixture;

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<TestHttpServer>();
        m_fixture = std::make_unique<LibraryFixture>(m_server->url());
        QVERIFY(m_fixture->open() && m_fixture->import("own"));
        m_fixture->log.entries.clear();
    }
    void cleanup() { m_fixture.reset(); }

    void wrongOnesChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const QByteArray &json, const char *message) {
            QTest::newRow(name) << json << QString::fromLatin1(message);
        };
        const QByteArray good = catalogue({makeItem("new")});
        const auto changed = [&good](const char *from, const char *to) {
            return QByteArray(good).replace(from, to);
        };
        row("cut", good.left(good.size() / 2), "byte");
        row("array", "[]", "format");
        row("format", changed("\"format\": 1", "\"format\": 2"), "format: only 1");
        row("items", changed("\"items\"", "\"things\""), "items: an array");
        row("slug", changed("\"slug\": \"new\"", "\"slug\": \"../../new\""), "items\\[0\\]: slug");
        row("twice", catalogue({makeItem("a"), makeItem("a")}), "\\[1\\]: \"a\" is there twice");
        row("version",
            changed("\"version\": 1\n        }", "\"version\": 1.5\n        }"),
            "version");
        row("folder", changed("Cutout/", "Cutout//"), "is no folder");
        row("size", changed("\"size\": 10", "\"size\": 0"), "package: size");
        row("checksum", changed("aaaa\"", "aaaG\""), "package: sha256");
        row("address", changed("packages/x.json", "file:///etc/passwd"), "no acceptable address");
        row("no host", changed("packages/x.json", "http:///x"), "no acceptable address");
        row("bad folder", catalogue({}, {"/"}), "folders: ");
    }

    void wrongOnesChangeNothing()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, message);
        m_server->setFile("/presets" + Path, json);
        m_fixture->settings.server = m_server->url("/presets");
        m_fixture->open();
        expectWarning("no catalogue: .*" + message);
        QCOMPARE(m_fixture->refresh(), int(DownloadError::Refused));
        QCOMPARE(m_fixture->slugs(), QStringLiteral("own"));
        QCOMPARE(m_fixture->files().size(), 2);
    }

    // Its checksum is not known: pieces of two catalogues could not be told from a whole one.
    void brokenTransferStartsAgain()
    {
        m_server->setFile(Path, catalogue({makeItem("new")}));
        m_server->setBehaviour(Path, TestHttpServer::BreakOnce);
        QCOMPARE(m_fixture->refresh(), 0);
        QCOMPARE(m_server->requests, (QStringList {"GET " + Path, "GET " + Path}));
        QCOMPARE(m_fixture->slugs(), QStringLiteral("own new"));
        QCOMPARE(m_fixture->files().size(), 2);
    }

    void foldersMakeATree()
    {
        m_server->setFile(Path, catalogue({makeItem("deep", "/Neon")}, {"Other", "Cutout"}));
        QCOMPARE(m_fixture->refresh(), 0);
        QCOMPARE(m_fixture->log.text(), QStringLiteral("before reload,after reload"));
        QCOMPARE(m_fixture->slugs(), QStringLiteral("own deep"));
        QCOMPARE(m_fixture->presets()->medias(false).size(), 1);
        QVERIFY(m_fixture->folder("Neon") && m_fixture->folder("Other"));

        // An item more in the sub-folder changes what the folder above lists.
        m_fixture->manager()->loadFolder(m_fixture->presets());
        QTRY_COMPARE(m_fixture->log.count("loaded"), 1);
        m_fixture->log.entries.clear();
        m_server->setFile(
            Path, catalogue({makeItem("deep", "/Neon"), makeItem("deeper", "/Neon")}, {"Other"}));
        QCOMPARE(m_fixture->refresh(), 0);
        QCOMPARE(m_fixture->log.text(),
                 QStringLiteral("adding deeper,added deeper,loaded subject_smart_cutout_preset"));

        m_server->setFile(Path, catalogue({}));
        QCOMPARE(m_fixture->refresh(), 0);
        QVERIFY(!m_fixture->folder("Neon") && !m_fixture->folder("Other"));
        QCOMPARE(m_fixture->slugs(), QStringLiteral("own"));
    }

    void higherVersionWins()
    {
        QVERIFY(m_server->serve({makeLook("same", 1, 2), makeLook("newer", 2, 2)}));
        m_fixture->import("same newer");
        QCOMPARE(m_fixture->refresh(), 0);
        QTRY_COMPARE(m_fixture->log.count("finished newer"), 2);
        QCOMPARE(m_fixture->log.count("finished same"), 0);

        // The next start of the program does not bring its older one back, its next release does.
        const QString newer = m_fixture->item("newer")->thumbnailPath();
        m_fixture->import("same newer");
        QCOMPARE(m_fixture->item("newer")->thumbnailPath(), newer);
        m_fixture->library().importLooks({makeLook("same"), makeLook("newer", 3, 3)});
        QVERIFY(m_fixture->item("newer")->thumbnailPath() != newer);
        QVERIFY(m_fixture->item("newer")->effect());
        QCOMPARE(m_fixture->files().size(), 4);
    }

    void serverItemsComeAndGo()
    {
        QVERIFY(m_server->serve(looks("x y")));
        QCOMPARE(m_fixture->refresh(), 0);
        QCOMPARE(m_fixture->slugs(), QStringLiteral("own x y"));
        QVERIFY(m_fixture->item("x")->needsDownload() && !m_fixture->item("x")->effect());
        QCOMPARE(m_fixture->download("x"), QStringLiteral("finished x 2 0"));
        QVERIFY(m_fixture->item("x")->effect());

        // What somebody has fetched stays, and what the program brought is not the server's to
        // remove.
        QVERIFY(m_server->serve(looks("z")));
        QCOMPARE(m_fixture->refresh(), 0);
        QCOMPARE(m_fixture->slugs(), QStringLiteral("own x z"));
        QVERIFY(m_fixture->item("x")->effect());
    }

    void serverFilesAreBroughtUpToDate()
    {
        QVERIFY(m_server->serve({makeLook("a", 1, 1)}));
        const QDir packages(m_server->directory.filePath("packages"));
        const QStringList before = packages.entryList(QDir::Files);
        QVERIFY(m_server->serve({makeLook("a", 1, 2)}));
        // Whoever has the old catalogue still finds its files.
        QCOMPARE(packages.entryList(QDir::Files).size(), 2);
        QVERIFY(packages.exists(before.first()));
        QFile file(m_server->directory.path() + Path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray newest = file.readAll();
        QCOMPARE(QJsonDocument::fromJson(newest)["version"].toInt(), 2);
        QVERIFY(!newest.contains(before.first().toUtf8()));

        QString error;
        const QString inTheWay = packages.filePath(before.first());
        QVERIFY(!zk::datamodel::writeResourceServerFiles(looks("a"), inTheWay, &error));
        QVERIFY(!error.isEmpty());
    }
};

ZK_TEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
