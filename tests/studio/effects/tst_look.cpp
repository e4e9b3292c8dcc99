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
    void faultsNameTheFieldOrTheLine_data()
    {
        QTest::addColumn<QByteArray>("rest"); // after the fields that every look needs
        QTest::addColumn<QString>("start");
        const auto row = [](const char *start, QByteArray rest) {
            QTest::newRow(start) << rest.replace('\'', '"') << QString::fromLatin1(start);
        };
        const auto layer = [&](const char *start, const QByteArray &fields) {
            row(start, "'layers': [{'type': 'glow'}, {'type': " + fields + "}]");
        };
        row("line 3: ", "\n\n'layers': [}");
        row("layres: unknown", "'layres': []");
        row("layers[0]: ", "'layers': [3]");
        row("matte.feather: ", "'matte': {'feather': -1}");
        row("version: ", "'version': 0");
        row("slug: ", "'slug': 'A b'");
        layer("layers[1].type: there is no", "'sparkle'");
        layer("layers[1].width: a number from 0 to 400", "'outline', 'width': '12'");
        layer("layers[1].strength: ", "'glow', 'strength': 9");
        layer("layers[1].count: ", "'echo', 'count': 2.5");
        layer("layers[1].colours: ", "'outline', 'colours': ['#ffffff', 1]");
        layer("layers[1].place: one of below, above", "'glow', 'place': 'beside'");
    }
    void faultsNameTheFieldOrTheLine()
    {
        QFETCH(QByteArray, rest);
        QFETCH(QString, start);
        const QByteArray json =
            "{\"slug\": \"a-1\", \"name\": \"A\", \"category\": \"B\", " + rest + "}";
        Look look;
        QString error;
        QVERIFY(!Look::fromJson(json, &look, &error));
        QVERIFY2(error.startsWith(start), qPrintable(error));
        QVERIFY(look.name.isEmpty());
    }

    void survivesReadingAndWriting()
    {
        const QByteArray json = R"({"slug": "x", "name": "X", "category": "C",
            "matte": {"shift": -2.5},
            "layers": [{"type": "outline", "colours": ["#102030", "#80ff0000"], "gradient": "around",
                        "width": 7, "place": "above"}, {"type": "echo", "count": 5}]})";
        QString error;
        Look read;
        QVERIFY2(Look::fromJson(json, &read, &error), qPrintable(error));
        Look look;
        QVERIFY2(Look::fromJson(read.toJson(), &look, &error), qPrintable(error));
        QCOMPARE(look.toJson(), read.toJson());
        QCOMPARE(look.matte.shiftPx, -2.5);
        QCOMPARE(look.layers.size(), 2);
        QCOMPARE(int(look.layers[0].place), int(Layer::Place::Above));
        const auto &outline = std::get<OutlineLayer>(look.layers[0].kind);
        QCOMPARE(outline.colours,
                 (QVector<QColor> {QColor(0x10, 0x20, 0x30), QColor(255, 0, 0, 128)}));
        QCOMPARE(int(outline.gradient), int(OutlineLayer::Gradient::Around));
        QCOMPARE(outline.width, 7.0);
        QCOMPARE(outline.opacity, OutlineLayer().opacity); // was not given
        QCOMPARE(std::get<EchoLayer>(look.layers[1].kind).count, 5);
    }

    void builtinLooksAreUsableAndDistinct()
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
            pictures.append(picture);
            Look again;
            QVERIFY2(Look::fromJson(look.toJson(), &again), qPrintable(look.slug));
            QCOMPARE(renderThumbnail(again), picture);
        }
    }
};

ZK_TEST_CORE_MAIN(TestLook)
#include "tst_look.moc"
