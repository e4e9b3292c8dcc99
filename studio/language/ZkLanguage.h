// The language of the user interface.
#pragma once

#include "ZkLanguageGlobal.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

class QLocale;
class QSettings;
class QTranslator;

namespace zk::app {

// Installs the translations of the language that the user chose and keeps the choice in the settings.
// A switch reaches every widget as QEvent::LanguageChange before the event loop is idle again. GUI
// thread only; one object per application, made after it.
class ZKLANGUAGE_EXPORT Language : public QObject
{
    Q_OBJECT

public:
    struct Choice
    {
        QString code; // "de", "zh_CN"; empty: the system's language
        QString name; // as its speakers write it
    };

    // The settings are not owned and must outlive the object.
    explicit Language(QSettings *settings, QObject *parent = nullptr);
    // Takes the translations out.
    ~Language() override;

    // In the order in which a list shows them; the system's language comes first.
    static QVector<Choice> choices();
    // The code of the language that suits a user who prefers these most, best first (such as "de-AT",
    // "zh-Hans-CN"); English when none is spoken.
    static QString bestMatch(const QStringList &preferred);

    // What is stored; empty: the system's language.
    QString chosen() const;
    // What is shown; never empty.
    QString current() const { return m_current; }

    // Shows what is stored. Called once at start, before the windows are made.
    void apply();
    // Stores the choice and shows it. False, with nothing changed, for a code that choices() lacks.
    bool choose(const QString &code);

Q_SIGNALS:
    // The translations are in place; widgets hear of it by QEvent::LanguageChange.
    void currentChanged(const QString &code);

private:
    void show(const QString &code);
    void install(const QString &file);

    QSettings *const m_settings;
    QString m_current = QStringLiteral("en"); // the texts of the source
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

} // namespace zk::app
