#include "ZkLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

#include <algorithm>

namespace {

const QLatin1String settingsKey("language");
const QLatin1String embedded(":/ZkTranslations");

// Numbers and dates keep the country's habits when the system speaks the language.
QLocale localeFor(const QString &code)
{
    const QLocale wanted(code);
    const QLocale system = QLocale::system();
    return system.language() == wanted.language() && system.script() == wanted.script() ? system
                                                                                        : wanted;
}

} // namespace

namespace zk::app {

Language::Language(QSettings *settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{ }

Language::~Language() = default;

QVector<Language::Choice> Language::choices()
{
    return {{QString(), tr("System language")},
            {QStringLiteral("de"), QStringLiteral("Deutsch")},
            {QStringLiteral("en"), QStringLiteral("English")},
            {QStringLiteral("zh_CN"), QStringLiteral("简体中文")}};
}

QString Language::bestMatch(const QStringList &preferred)
{
    for (const QString &name : preferred) {
        const QLocale locale(name);
        if (locale.language() == QLocale::German)
            return QStringLiteral("de");
        if (locale.language() == QLocale::English)
            return QStringLiteral("en");
        // Who reads traditional characters is better served by the next language.
        if (locale.language() == QLocale::Chinese
            && locale.script() == QLocale::SimplifiedChineseScript)
            return QStringLiteral("zh_CN");
    }
    return QStringLiteral("en");
}

QString Language::chosen() const
{
    const QString stored = m_settings->value(settingsKey).toString();
    const auto all = choices();
    const bool isKnown = std::any_of(
        all.begin(), all.end(), [&stored](const Choice &choice) { return choice.code == stored; });
    return isKnown ? stored : QString();
}

void Language::apply()
{
    const QString code = chosen();
    show(code.isEmpty() ? bestMatch(QLocale::system().uiLanguages()) : code);
}

bool Language::choose(const QString &code)
{
    const auto all = choices();
    if (std::none_of(
            all.begin(), all.end(), [&code](const Choice &choice) { return choice.code == code; }))
        return false;
    m_settings->setValue(settingsKey, code);
    apply();
    return true;
}

void Language::show(const QString &code)
{
    if (code == m_current && !m_translators.empty())
        return;
    m_translators.clear(); // a translator takes itself out
    QLocale::setDefault(localeFor(code));
    // Qt's own texts first: what is installed later is asked earlier.
    install(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QLatin1String("/qtbase_")
            + code + QLatin1String(".qm"));
    const auto files =
        QDir(embedded).entryInfoList({QLatin1String("*_") + code + QLatin1String(".qm")});
    for (const QFileInfo &file : files)
        install(file.filePath());
    m_current = code;
    Q_EMIT currentChanged(code);
}

// Qt's texts may not be installed, and English has a file only for its plurals.
void Language::install(const QString &file)
{
    auto translator = std::make_unique<QTranslator>();
    if (translator->load(file) && QCoreApplication::installTranslator(translator.get()))
        m_translators.push_back(std::move(translator));
}

} // namespace zk::app
