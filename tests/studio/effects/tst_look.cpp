// Reading and writing looks, and the looks that come with the program.
#include "ZkLook.h"
#include "ZkLookCatalogue.h"
#include "ZkTestMain.h"

#include <QImage>
#include <QSet>

using namespace zk::effects;

class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void faultsNameTheFieldOrTheLine_data();
    void faultsNameTheFieldOrTheLine();
    void readsValuesAndKeepsDefaults();
    void survivesWritingAndReading();
    void builtinLooksAreUsableAndDistinct();
};

void TestLook::faultsNameTheFieldOrTheLine_data()
{
    QTest::addColumn<QByteArray>("rest"); // after the fields that every look needs
    QTest::addColumn<QString>("start");
    const auto row = [](const char *name, const char *rest, const char *start) {
        QTest::newRow(name) << QByteArray(rest) << QString::fromLatin1(start);
    };
    row("syntax", "\n\n\"layers\": [}", "line 3: ");
    row("unknown field", "\"layres\": []", "layres: unknown");
    row("no list", "\"layers\": 3", "layers: ");
    row("layer that is no object", "\"layers\": [3]", "layers[0]: ");
    row("no type", "\"layers\": [{}]", "layers[0].type: ");
    row("unknown type", "\"layers\": [{\"type\": \"sparkle\"}]", "layers[0].type: there is no");
    row("wrong type of number",
        "\"layers\": [{\"type\": \"glow\"}, {\"type\": \"outline\", \"width\": \"12\"}]",
        "layers[1].width: a number from 0 to 400");
    row("out of range",
        "\"layers\": [{\"type\": \"glow\", \"strength\": 9}]",
        "layers[0].strength: ");
    row("fraction of a count",
        "\"layers\": [{\"type\": \"echo\", \"count\": 2.5}]",
        "layers[0].count: ");
    row("bad colour",
        "\"layers\": [{\"type\": \"glow\", \"colour\": \"red\"}]",
        "layers[0].colour: ");
    row("bad colour in a list",
        "\"layers\": [{\"type\": \"outline\", \"colours\": [\"#ffffff\", 1]}]",
        "layers[0].colours: ");
    row("no colours",
        "\"layers\": [{\"type\": \"outline\", \"colours\": []}]",
        "layers[0].colours: ");
    row("bad choice",
        "\"layers\": [{\"type\": \"glow\", \"place\": \"beside\"}]",
        "layers[0].place: one of below, above");
    row("no flag", "\"layers\": [{\"type\": \"glow\", \"inner\": 1}]", "layers[0].inner: ");
    row("misspelt in a layer",
        "\"layers\": [{\"type\": \"glow\", \"radus\": 1}]",
        "layers[0].radus: unknown");
    row("in the matte", "\"matte\": {\"feather\": -1}", "matte.feather: ");
    row("version", "\"version\": 0", "version: ");
}

void TestLook::faultsNameTheFieldOrTheLine()
{
    QFETCH(QByteArray, rest);
    QFETCH(QString, start);
    const QByteArray json =
        "{\"slug\": \"a-1\", \"name\": \"A\", \"category\": \"B\", " + rest + "}";
    Look look;
    look.name = QStringLiteral("before");
    QString error;
    QVERIFY(!Look::fromJson(json, &look, &error));
    QVERIFY2(error.startsWith(start), qPrintable(error));
    QCOMPARE(look.name, QStringLiteral("before"));
    QVERIFY(!Look::fromJson(json, &look));
}

void TestLook::readsValuesAndKeepsDefaults()
{
    QString error;
    Look look;
    QVERIFY(!Look::fromJson("[]", &look, &error));
    QVERIFY(!Look::fromJson(
        "{\"slug\": \"A b\", \"name\": \"n\", \"category\": \"c\"}", &look, &error));
    QVERIFY2(error.startsWith(QLatin1String("slug: ")), qPrintable(error));

    const QByteArray json = R"({"slug": "x", "name": "X", "category": "C", "version": 4,
        "matte": {"shift": -2.5},
        "layers": [{"type": "outline", "colours": ["#102030", "#80ff0000"], "gradient": "around",
                    "width": 7, "place": "above"}, {"type": "shadow"}]})";
    QVERIFY2(Look::fromJson(json, &look, &error), qPrintable(error));
    QVERIFY(error.isEmpty());
    QCOMPARE(look.version, 4);
    QCOMPARE(look.matte.shiftPx, -2.5);
    QCOMPARE(look.matte.featherPx, 0.0);
    QCOMPARE(look.layers.size(), 2);
    QCOMPARE(int(look.layers[0].place), int(Layer::Place::Above));
    const auto &outline = std::get<OutlineLayer>(look.layers[0].kind);
    QCOMPARE(outline.colours, (QVector<QColor> {QColor(0x10, 0x20, 0x30), QColor(255, 0, 0, 128)}));
    QCOMPARE(int(outline.gradient), int(OutlineLayer::Gradient::Around));
    QCOMPARE(outline.width, 7.0);
    QCOMPARE(outline.opacity, OutlineLayer().opacity);
    QCOMPARE(std::get<ShadowLayer>(look.layers[1].kind).blur, ShadowLayer().blur);
}

void TestLook::survivesWritingAndReading()
{
    Look look;
    look.slug = QStringLiteral("all");
    look.name = QStringLiteral("All");
    look.category = QStringLiteral("Test");
    look.matte.featherPx = 1.25;
    EchoLayer echo;
    echo.count = 5;
    echo.tint = QColor(1, 2, 3, 4);
    GlowLayer glow;
    glow.inner = true;
    look.layers = {{echo, Layer::Place::Below},
                   {glow, Layer::Place::Above},
                   {ComicLayer(), Layer::Place::Below},
                   {NeonLayer(), Layer::Place::Below}};
    Look read;
    QString error;
    QVERIFY2(Look::fromJson(look.toJson(), &read, &error), qPrintable(error));
    QCOMPARE(read.toJson(), look.toJson());
    QCOMPARE(std::get<EchoLayer>(read.layers[0].kind).count, 5);
    QCOMPARE(std::get<EchoLayer>(read.layers[0].kind).tint, QColor(1, 2, 3, 4));
    QVERIFY(std::get<GlowLayer>(read.layers[1].kind).inner);
}

void TestLook::builtinLooksAreUsableAndDistinct()
{
    QStringList errors;
    const QVector<Look> looks = LookCatalogue::builtin(&errors);
    QCOMPARE(errors, QStringList());
    QVERIFY(looks.size() >= 12);

    QSet<QString> slugs;
    const QImage plain = renderThumbnail(Look());
    QCOMPARE(plain.size(), QSize(108, 108));
    QCOMPARE(plain.devicePixelRatio(), 2.0);
    QVector<QImage> pictures {plain};
    for (const Look &look : looks) {
        QVERIFY2(!slugs.contains(look.slug), qPrintable(look.slug));
        slugs.insert(look.slug);
        const QImage picture = renderThumbnail(look);
        QVERIFY2(!pictures.contains(picture), qPrintable(look.slug));
        QCOMPARE(picture, renderThumbnail(look));
        pictures.append(picture);
        Look again;
        QVERIFY2(Look::fromJson(look.toJson(), &again), qPrintable(look.slug));
        QCOMPARE(renderThumbnail(again), picture);
    }
    QVERIFY(renderThumbnail(Look(), QSize()).isNull());
}

ZK_TEST_CORE_MAIN(TestLook)
#include "tst_look.moc"
