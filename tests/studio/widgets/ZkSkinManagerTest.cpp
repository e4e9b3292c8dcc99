#include "ZkTestMain.h"

#include "ZkSkin_p.h"
#include "ZkWidgets.h"

#include <QApplication>
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
    void strokesAreBlueAndRed()
    {
        const QColor keep = ZkSkinManager::instance()->color(ZKSKIN::KeepStroke);
        const QColor remove = ZkSkinManager::instance()->color(ZKSKIN::RemoveStroke);
        QVERIFY(keep.hslHue() > 170 && keep.hslHue() < 230);
        QVERIFY(remove.hslHue() > 330 || remove.hslHue() < 10);
    }

    void appliesSectionsByKey_data()
    {
        QTest::addColumn<bool>("isKnown");
        for (const char *key : {"Application/MainWindow",
                                "Widgets/Panel",
                                "Widgets/Canvas",
                                "Widgets/PrimaryButton",
                                "Widgets/Toast"})
            QTest::newRow(key) << true;
        for (const char *key : {"Widgets/NoSuchObject", "NoSuchArea/Panel", "Widgets", "/"})
            QTest::newRow(key) << false;
    }

    // Qt warns about a style sheet that it cannot parse, and the skin about an unknown colour.
    void appliesSectionsByKey()
    {
        QFETCH(bool, isKnown);
        const QString key = QString::fromLatin1(QTest::currentDataTag());
        const QString before = QStringLiteral("QWidget { color: red; }");
        QWidget widget;
        widget.setStyleSheet(before);
        const ZkSkin skin(":/ZkSkin");
        QCOMPARE(ZkSkinManager::instance()->applyStyleSheet(&widget, key), isKnown);
        widget.ensurePolished();
        QCOMPARE(widget.styleSheet(), isKnown ? skin.styleSheet(key) : before);
        QVERIFY(!ZkSkinManager::instance()->applyStyleSheet(nullptr, key));
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
          "/* @section Empty */\r\n/* @section Last */\nQLabel { color: @Good }");
    // The test fails when an ignored message does not come.
    QTest::ignoreMessage(QtWarningMsg, "the palette has no valid colour for \"Bad\"");
    QTest::ignoreMessage(QtWarningMsg, "Area/One names the unknown colour Missing");
    const ZkSkin skin(dir.path());
    QCOMPARE(skin.color(3), QColor(0x10, 0x20, 0x30)); // opaque, whatever the file says
    QVERIFY(!skin.color(4).isValid());
    QVERIFY(skin.styleSheet("Area/One").contains(QLatin1String("color: #102030;")));
    QVERIFY(!skin.styleSheet("Area/Empty").isNull());
    QCOMPARE(skin.styleSheet("Area/Last"), QStringLiteral("QLabel { color: #102030 }"));
}

ZK_TEST_MAIN(ZkSkinManagerTest)
#include "ZkSkinManagerTest.moc"
