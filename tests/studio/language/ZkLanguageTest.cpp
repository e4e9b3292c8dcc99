#include "ZkLanguage.h"
#include "ZkPresetNames.h"
#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QSettings>
#include <QTemporaryDir>
#include <QXmlStreamReader>

using zk::app::Language;

namespace {

// Shows a text of the widget library and follows the language.
class Mirror : public QLabel
{
public:
    Mirror() { retranslate(); }

    int changes = 0;

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange) {
            ++changes;
            retranslate();
        }
        QLabel::changeEvent(event);
    }

private:
    void retranslate() { setText(QCoreApplication::translate("ZkZoomSlider", "Zoom in")); }
};

struct Message
{
    QString source;
    QStringList translations; // more than one: the forms of a counted text
};

QVector<Message> messagesOf(const QString &path)
{
    QVector<Message> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return messages;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("source"))
            messages.push_back({xml.readElementText(), {}});
        else if (xml.name() == QLatin1String("numerusform"))
            messages.last().translations.push_back(xml.readElementText());
        else if (xml.name() == QLatin1String("translation")
                 && xml.attributes().value(QLatin1String("type")).isEmpty()) {
            const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            if (!text.trimmed().isEmpty())
                messages.last().translations.push_back(text);
        }
    }
    return messages;
}

QStringList placeholdersOf(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("%(L?\\d+|n)|</?\\w+>"));
    QStringList found;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext())
        found.push_back(matches.next().captured());
    found.sort();
    return found;
}

} // namespace

class ZkLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void bestMatch_data();
    void bestMatch();
    void switchesWhileRunning();
    void remembersTheChoice();
    void presetsAreNamed();
    void translationsFitTheirSources_data();
    void translationsFitTheirSources();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_settings;
};

void ZkLanguageTest::init()
{
    m_settings = std::make_unique<QSettings>(m_folder.filePath(QStringLiteral("settings.ini")),
                                             QSettings::IniFormat);
    m_settings->clear();
}

void ZkLanguageTest::bestMatch_data()
{
    QTest::addColumn<QStringList>("preferred");
    QTest::addColumn<QString>("language");
    const auto row = [](const char *name, const QString &preferred, const char *language) {
        QTest::newRow(name) << preferred.split(QLatin1Char(' '), Qt::SkipEmptyParts)
                            << QString::fromLatin1(language);
    };
    row("a country of the language", QStringLiteral("de-AT"), "de");
    row("the first of several", QStringLiteral("fr-FR de-CH en-GB"), "de");
    row("english before german", QStringLiteral("en-GB de"), "en");
    row("china", QStringLiteral("zh-CN"), "zh_CN");
    row("simplified, by script", QStringLiteral("zh-Hans-SG"), "zh_CN");
    row("traditional is another one", QStringLiteral("zh-TW de"), "de");
    row("none is spoken", QStringLiteral("fr-FR C"), "en");
    row("no wish", QString(), "en");
}

void ZkLanguageTest::bestMatch()
{
    QFETCH(QStringList, preferred);
    QTEST(Language::bestMatch(preferred), "language");
}

void ZkLanguageTest::switchesWhileRunning()
{
    Language language(m_settings.get());
    QVERIFY(language.choose(QStringLiteral("en")));
    Mirror mirror;
    const QString english = mirror.text();

    QVERIFY(language.choose(QStringLiteral("de")));
    QCOMPARE(language.current(), QStringLiteral("de"));
    QTRY_COMPARE_WITH_TIMEOUT(mirror.text(), QStringLiteral("Vergrößern"), 10000);
    QCOMPARE(mirror.changes, 1);
    QCOMPARE(QLocale().decimalPoint(), QLatin1Char(','));

    QVERIFY(language.choose(QStringLiteral("zh_CN")));
    QTRY_COMPARE_WITH_TIMEOUT(mirror.text(), QStringLiteral("放大"), 10000);

    QVERIFY(!language.choose(QStringLiteral("fr")));
    QCOMPARE(language.current(), QStringLiteral("zh_CN"));

    QVERIFY(language.choose(QStringLiteral("en")));
    QTRY_COMPARE_WITH_TIMEOUT(mirror.text(), english, 10000);
}

void ZkLanguageTest::remembersTheChoice()
{
    const QString german = QStringLiteral("de");
    {
        Language language(m_settings.get());
        QCOMPARE(language.chosen(), QString());
        QVERIFY(language.choose(german));
    }
    QCOMPARE(QCoreApplication::translate("ZkZoomSlider", "Zoom in"), QStringLiteral("Zoom in"));

    Language language(m_settings.get());
    language.apply();
    QCOMPARE(language.chosen(), german);
    QCOMPARE(language.current(), german);

    QVERIFY(language.choose(QString()));
    QCOMPARE(language.current(), Language::bestMatch(QLocale::system().uiLanguages()));
    // As an older or newer version may have stored it.
    m_settings->setValue(QStringLiteral("language"), QStringLiteral("tlh"));
    QCOMPARE(language.chosen(), QString());
}

// A look that is added without its name in the list would stay English.
void ZkLanguageTest::presetsAreNamed()
{
    Language language(m_settings.get());
    QVERIFY(language.choose(QStringLiteral("zh_CN")));
    const auto files =
        QDir(QStringLiteral(ZK_PRESET_FOLDER)).entryInfoList({QStringLiteral("*.json")});
    QVERIFY(!files.isEmpty());
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonObject preset = QJsonDocument::fromJson(file.readAll()).object();
        for (const char *key : {"name", "category"}) {
            const QString name = preset.value(QLatin1String(key)).toString();
            QVERIFY2(zk::app::presetName(name) != name, qPrintable(name));
        }
    }
}

void ZkLanguageTest::translationsFitTheirSources_data()
{
    QTest::addColumn<QString>("file");
    const auto folders = QStringLiteral(ZK_TRANSLATION_FOLDERS).split(QLatin1Char(','));
    for (const QString &folder : folders) {
        const auto files = QDir(folder).entryInfoList({QStringLiteral("*.ts")});
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &info : files)
            QTest::newRow(info.fileName().toLatin1().constData()) << info.filePath();
    }
}

// What is filled in (%1) and the dots of a text that leads to a dialog are in every translation.
void ZkLanguageTest::translationsFitTheirSources()
{
    QFETCH(QString, file);
    const QString dots = QStringLiteral("…");
    for (const Message &message : messagesOf(file)) {
        for (const QString &translation : message.translations) {
            QVERIFY2(placeholdersOf(translation) == placeholdersOf(message.source)
                         || message.translations.size() > 1,
                     qPrintable(translation));
            QVERIFY2(translation.endsWith(dots) == message.source.endsWith(dots),
                     qPrintable(translation));
            QVERIFY2(translation.count(QLatin1Char('&')) == message.source.count(QLatin1Char('&')),
                     qPrintable(translation));
        }
    }
}

ZK_TEST_MAIN(ZkLanguageTest)
#include "ZkLanguageTest.moc"
