#include "ZkTestMain.h"

#include "ZkCore.h"
#include "ZkSkin_p.h"
#include "ZkWidgets.h"

#include <QApplication>
#include <QDirIterator>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
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
    void shippedStyleSheetsParse();
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
    for (const QColor &color : {keep, remove, panel})
        QCOMPARE(color.alpha(), 255);
    QVERIFY(!skin->color(0).isValid());
    QVERIFY(!skin->color(-1).isValid());
}

void ZkSkinManagerTest::appliesSectionsByKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("known");
    QTest::newRow("known") << QStringLiteral("Widgets/PrimaryButton") << true;
    QTest::newRow("unknown object") << QStringLiteral("Widgets/NoSuchObject") << false;
    QTest::newRow("unknown area") << QStringLiteral("NoSuchArea/PrimaryButton") << false;
    QTest::newRow("area alone") << QStringLiteral("Widgets") << false;
    QTest::newRow("empty") << QString() << false;
}

void ZkSkinManagerTest::appliesSectionsByKey()
{
    QFETCH(QString, key);
    QFETCH(bool, known);
    const QString before = QStringLiteral("QPushButton { color: red; }");
    QPushButton button;
    button.setStyleSheet(before);
    QCOMPARE(ZkSkinManager::instance()->applyStyleSheet(&button, key), known);
    QCOMPARE(button.styleSheet() != before, known);
    QVERIFY(!ZkSkinManager::instance()->applyStyleSheet(nullptr, key));
}

// Qt warns about a style sheet that it cannot parse, and the skin about a colour that it does not know.
void ZkSkinManagerTest::shippedStyleSheetsParse()
{
    static const QRegularExpression header(QStringLiteral("@section (\\S+)"));
    const QtMessageHandler previous = qInstallMessageHandler(keepWarning);
    const ZkSkin skin(QStringLiteral(":/ZkSkin"));
    int sections = 0;
    QDirIterator files(QStringLiteral(":/ZkSkin"), {QStringLiteral("*.qss")});
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qWarning() << file.errorString();
        auto matches = header.globalMatch(QString::fromUtf8(file.readAll()));
        for (; matches.hasNext(); ++sections) {
            const QString object = matches.next().captured(1);
            const QString key = files.fileInfo().completeBaseName() + QLatin1Char('/') + object;
            QWidget widget;
            if (!ZkSkinManager::instance()->applyStyleSheet(&widget, key))
                qWarning() << "cannot apply" << key;
            widget.ensurePolished();
        }
    }
    qInstallMessageHandler(previous);
    QVERIFY(sections >= 5);
    QVERIFY2(qtWarnings.isEmpty(), qPrintable(qtWarnings.join(QLatin1Char('\n'))));
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
    QStringList warnings;
    const int sink = ZkBaseLog::addSink([&](const ZkLogRecord &record) {
        if (record.level == ZKLOG::Warning)
            warnings.append(record.message);
    });
    const auto ignored = QRegularExpression(QStringLiteral("\"Bad\"|Missing"));
    QTest::ignoreMessage(QtWarningMsg, ignored);
    QTest::ignoreMessage(QtWarningMsg, ignored);
    const ZkSkin skin(dir.path());
    ZkBaseLog::removeSink(sink);

    QCOMPARE(warnings.size(), 2);
    QCOMPARE(skin.color(3), QColor(0x10, 0x20, 0x30)); // opaque, whatever the file says
    QVERIFY(!skin.color(4).isValid());
    QVERIFY(skin.styleSheet(QStringLiteral("Area/One")).contains(QLatin1String("color: #102030;")));
    QVERIFY(!skin.styleSheet(QStringLiteral("Area/Empty")).isNull());
    QVERIFY(skin.styleSheet(QStringLiteral("Area/Empty")).isEmpty());
    QCOMPARE(skin.styleSheet(QStringLiteral("Area/Last")),
             QStringLiteral("QLabel { color: #102030 }"));
    QVERIFY(skin.styleSheet(QStringLiteral("Area/Missing")).isNull());
}

ZK_TEST_MAIN(ZkSkinManagerTest)
#include "ZkSkinManagerTest.moc"
