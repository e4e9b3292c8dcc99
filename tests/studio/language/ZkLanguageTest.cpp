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

using Pair = QPair<QString, QString>; // a text of the sources and its translation

// A counted text has a translation for each of its forms.
QVector<Pair> translationsIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QVector<Pair> found;
    QString source;
    bool isCounted = false;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (!xml.readNextStartElement())
            continue;
        if (xml.name() == QLatin1String("source"))
            source = xml.readElementText();
        else if (xml.name() == QLatin1String("numerusform"))
            found.append({source, xml.readElementText()});
        else if (xml.name() == QLatin1String("message"))
            isCounted = xml.attributes().hasAttribute(QLatin1String("numerus"));
        else if (xml.name() == QLatin1String("translation") && !isCounted)
            found.append({source, xml.readElementText()});
    }
    return found;
}

// What is filled in, the mnemonic, and the dots of a command that asks further.
QStringList marksOf(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral("%(L?\\d+|n)|</?\\w+>|&(?=\\w)|(\\.\\.\\.|…)$"));
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
    void init()
    {
        m_settings = std::make_unique<QSettings>(m_folder.filePath(QStringLiteral("settings.ini")),
                                                 QSettings::IniFormat);
        m_settings->clear();
    }

    void bestMatch()
    {
        const QVector<QStringList> preferred {
            {"de-AT"}, // a country of the language
            {"fr-FR", "de-CH", "en-GB"}, // the first that is spoken
            {"en-GB", "de"},
            {"zh-Hans-SG"}, // simplified, by its script
            {"zh-TW", "zh-CN"}, // traditional is another one
            {"fr-FR", "C"}}; // none is spoken
        QStringList found;
        for (const QStringList &languages : preferred)
            found += Language::bestMatch(languages);
        QCOMPARE(found, QStringList({"de", "de", "en", "zh_CN", "zh_CN", "en"}));
    }

    void switchesWhileRunning()
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

    void remembersTheChoice()
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
    void presetsAreNamed()
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

    void translationsFitTheirSources()
    {
        for (const QString &folder :
             QStringLiteral(ZK_TRANSLATION_FOLDERS).split(QLatin1Char(','))) {
            const auto files = QDir(folder).entryInfoList({QStringLiteral("*.ts")});
            QVERIFY(!files.isEmpty());
            for (const QFileInfo &file : files) {
                for (const Pair &text : translationsIn(file.filePath()))
                    QVERIFY2(text.second.isEmpty() || marksOf(text.first) == marksOf(text.second),
                             qPrintable(file.fileName() + ": " + text.second));
            }
        }
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_settings;
};

ZK_TEST_MAIN(ZkLanguageTest)
#include "ZkLanguageTest.moc"
