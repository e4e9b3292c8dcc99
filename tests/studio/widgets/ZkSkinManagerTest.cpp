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

QStringList qtWarnings;

void keepWarning(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    Q_UNUSED(context)
    if (type == QtWarningMsg)
        qtWarnings.append(text);
}

} // namespace

class ZkSkinManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void paletteHasItsNumbers();
    void appliesSectionsByKey_data();
    void appliesSectionsByKey();
    void faultySkinKeepsTheRest();
};

void ZkSkinManagerTest::paletteHasItsNumbers()
{
    const ZkSkinManager *skin = ZkSkinManager::instance();
    const QColor keep = skin->color(ZKSKIN::KeepStroke);
    const QColor remove = skin->color(ZKSKIN::RemoveStroke);
    const QColor panel = skin->color(ZKSKIN::PanelBackground);
    QVERIFY(keep.hslHue() > 170 && keep.hslHue() < 230);
    QVERIFY(remove.hslHue() > 330 || remove.hslHue() < 10);
    QVERIFY(panel.lightness() < 64 && panel.hslSaturation() < 40);
    QVERIFY(!skin->color(0).isValid());
}

void ZkSkinManagerTest::appliesSectionsByKey_data()
{
    QTest::addColumn<bool>("known");
    for (const char *key : {"Application/MainWindow",
                            "Widgets/Panel",
                            "Widgets/Canvas",
                            "Widgets/PrimaryButton",
                            "Widgets/Toast"})
        QTest::newRow(key) << true;
    for (const char *key : {"Widgets/NoSuchObject", "NoSuchArea/Panel", "Widgets", "Widgets/", "/"})
        QTest::newRow(key) << false;
}

void ZkSkinManagerTest::appliesSectionsByKey()
{
    QFETCH(bool, known);
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    const QString before = QStringLiteral("QWidget { color: red; }");
    QWidget widget;
    widget.setStyleSheet(before);
    // Qt warns about a style sheet that it cannot parse, and so does the skin about an unknown colour.
    qtWarnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepWarning);
    const ZkSkin skin(QStringLiteral(":/ZkSkin"));
    const bool applied = ZkSkinManager::instance()->applyStyleSheet(&widget, key);
    widget.ensurePolished();
    qInstallMessageHandler(previous);
    QCOMPARE(applied, known);
    QCOMPARE(widget.styleSheet(), known ? skin.styleSheet(key) : before);
    QVERIFY2(qtWarnings.isEmpty(), qPrintable(qtWarnings.join(QLatin1Char('\n'))));
    QVERIFY(!ZkSkinManager::instance()->applyStyleSheet(nullptr, key));
}

void ZkSkinManagerTest::faultySkinKeepsTheRest()
{
    const QTemporaryDir dir;
    write(dir.filePath(QStringLiteral("palette.json")),
          R"({"colors": [{"name": "Good", "number": 3, "value": "#80102030"},
                         {"name": "Bad", "number": 4, "value": "bluish"}]})");
    write(dir.filePath(QStringLiteral("Area.qss")),
          "/* not in a section: @Good */\n"
          "/* @section One */\nQLabel { color: @Good; background: @Missing; }\n"
          "/* @section Empty */\r\n/* @section Last */\nQLabel { color: @Good }");
    // The test fails when an ignored message does not come.
    QTest::ignoreMessage(QtWarningMsg, "the palette has no valid colour for \"Bad\"");
    QTest::ignoreMessage(QtWarningMsg, "Area/One names the unknown colour Missing");
    const ZkSkin skin(dir.path());
    QCOMPARE(skin.color(3), QColor(0x10, 0x20, 0x30)); // opaque, whatever the file says
    QVERIFY(!skin.color(4).isValid());
    QVERIFY(skin.styleSheet(QStringLiteral("Area/One")).contains(QLatin1String("color: #102030;")));
    QCOMPARE(skin.styleSheet(QStringLiteral("Area/Empty")).isNull(), false);
    QCOMPARE(skin.styleSheet(QStringLiteral("Area/Last")),
             QStringLiteral("QLabel { color: #102030 }"));
}

ZK_TEST_MAIN(ZkSkinManagerTest)
#include "ZkSkinManagerTest.moc"
