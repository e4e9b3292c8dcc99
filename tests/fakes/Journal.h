// One list of what happened to all fakes, so that tests can check orders across objects.
#pragma once

#include <QStringList>
#include <QVariant>
#include <QVector>

#ifdef ZK_BUILD_FAKEDATAMODEL
#define ZKFAKES_EXPORT Q_DECL_EXPORT
#else
#define ZKFAKES_EXPORT Q_DECL_IMPORT
#endif

namespace zk::fake {

ZKFAKES_EXPORT QStringList &journal();

// Arguments are joined by commas.
template<typename... Args>
void note(const QByteArray &call, const Args &...args)
{
    QStringList texts {QVariant(args).toString()...};
    journal() += texts.isEmpty()
        ? QString::fromLatin1(call)
        : QStringLiteral("%1(%2)").arg(QString::fromLatin1(call), texts.join(QLatin1Char(',')));
}

inline QStringList takeJournal()
{
    QStringList calls;
    calls.swap(journal());
    return calls;
}

// The observers of one fake; it notes who comes and goes.
template<typename Observer>
class Observers : public QVector<Observer *>
{
public:
    explicit Observers(const char *owner)
        : m_owner(owner)
    { }
    void add(Observer *observer)
    {
        note(m_owner + ".addObserver");
        this->append(observer);
    }
    void drop(Observer *observer)
    {
        note(m_owner + ".removeObserver");
        this->removeOne(observer);
    }

private:
    QByteArray m_owner;
};

} // namespace zk::fake
