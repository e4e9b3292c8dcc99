#include "ZkTestMain.h"

#include "ZkSkin_p.h"
#include "ZkWidgets.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
}

} // namespace

class ZkSkinManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void colorsHaveNumbers()
    {
        for (int type = ZKSKIN::Canvas; type <= ZKSKIN::OnAccent; ++type)
            QVERIFY2(ZkSkinManager::instance()->color(type).isValid(), QByteArray::number(type));
        for (int type : {26, 28, 2, 56, 57, 60})
            QVERIFY2(ZkSkinManager::instance()->color(type).isValid(), QByteArray::number(type));
        QVERIFY(!ZkSkinManager::instance()->color(0).isValid());
        const auto byKey = [](const QString &key) { return ZkSkinManager::instance()->color(key); };
        QCOMPARE(byKey("Accent"), ZkSkinManager::instance()->color(ZKSKIN::Accent));
        QCOMPARE(byKey("102030"), QColor(16, 32, 48));
        QVERIFY(byKey("333333").isValid() && !byKey("NoColor").isValid());
    }

    // A button whose icon is not there is an empty square.
    void namedIconsHaveAllLooks()
    {
        const ZkSkin skin(":/ZkSkin");
        const QRegularExpression name("qproperty-iconName: \"(\\w+)\"");
        QSet<QString> names {"play", "pause", "stop", "zoom_in", "zoom_out"};
        const QStringList keys = skin.keys();
        for (const QString &key : keys) {
            const QString sheet = skin.styleSheet(key);
            for (auto it = name.globalMatch(sheet); it.hasNext();)
                names.insert(it.next().captured(1));
        }
        QVERIFY(names.size() > 15);
        for (const QString &icon : qAsConst(names)) {
            for (const char *look : {"", "_checked", "_disabled"}) {
                const QString path = ":/ZkSkin/icons/icon24_" + icon + QLatin1String(look);
                QCOMPARE(QImage(path + ".png").size(), QSize(24, 24));
                QCOMPARE(QImage(path + "@2x.png").size(), QSize(48, 48));
            }
        }
        QVERIFY(ZkSkinManager::instance()->icon("no_such_icon").isNull());
    }

    // Qt warns about a style sheet that it cannot parse, and the skin about an unknown colour.
    void appliesSectionsByKey()
    {
        const ZkSkin skin(":/ZkSkin");
        const QStringList known = skin.keys();
        QVERIFY(known.size() > 20);
        const QStringList unknown {"Widgets/NoSuchObject", "NoSuchArea/Panel", "Widgets", "/"};
        const QString before = QStringLiteral("QWidget { color: red; }");
        for (const QString &key : known + unknown) {
            const bool isKnown = !unknown.contains(key);
            QWidget widget;
            widget.setStyleSheet(before);
            QVERIFY2(ZkSkinManager::instance()->applyStyleSheet(&widget, key) == isKnown,
                     qPrintable(key));
            widget.ensurePolished();
            QCOMPARE(widget.styleSheet(), isKnown ? skin.styleSheet(key) : before);
            QVERIFY(!ZkSkinManager::instance()->applyStyleSheet(nullptr, key));
        }
    }

    void faultySkinKeepsTheRest();
};

// Apart from the class: moc does not read raw strings.
void ZkSkinManagerTest::faultySkinKeepsTheRest()
{
    const QTemporaryDir dir;
    write(dir.filePath("palette.json"),
          R"({"colors": [{"name": "Good", "number": 3, "value": "#80102030"},
                         {"name": "Bad", "number": 4, "value": "bluish"}]})");
    write(dir.filePath("Area.qss"),
          "/* not in a section: @Good */\n"
          "/* @section One */\nQLabel { color: @Good; background: @Missing; }\n"
          "/* @section Empty */\r\n/* @section Last */\nQLabel { color: @Good }\n"
          "/* @section User */\n@use Area/Last\n@use Area/Nowhere\nQFrame { margin: 0 }");
    // The test fails when an ignored message does not come.
    QTest::ignoreMessage(QtWarningMsg, "the palette has no valid colour for \"Bad\"");
    QTest::ignoreMessage(QtWarningMsg, "Area/One names the unknown colour Missing");
    QTest::ignoreMessage(QtWarningMsg, "Area/User uses the unknown section Area/Nowhere");
    const ZkSkin skin(dir.path());
    QCOMPARE(skin.color(3), QColor(0x10, 0x20, 0x30)); // opaque, whatever the file says
    QVERIFY(!skin.color(4).isValid());
    QVERIFY(skin.styleSheet("Area/One").contains(QLatin1String("color: #102030;")));
    QVERIFY(!skin.styleSheet("Area/Empty").isNull());
    QCOMPARE(skin.styleSheet("Area/Last"), QStringLiteral("QLabel { color: #102030 }"));
    QCOMPARE(skin.styleSheet("Area/User").simplified(),
             QStringLiteral("QLabel { color: #102030 } QFrame { margin: 0 }"));
}

ZK_TEST_MAIN(ZkSkinManagerTest)
#include "ZkSkinManagerTest.moc"
