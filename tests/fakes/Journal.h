// One list of what happened to all fakes, so that tests can check orders across objects.
#pragma once

#include <QRectF>
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

// Rectangles as "x y w h".
inline QString text(const QVariant &value)
{
    if (value.userType() != QMetaType::QRect && value.userType() != QMetaType::QRectF)
        return value.toString();
    const QRectF rect = value.toRectF();
    return QStringLiteral("%1 %2 %3 %4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

// Arguments are joined by commas.
template<typename... Args>
void note(const QByteArray &call, const Args &...args)
{
    QStringList texts {text(QVariant(args))...};
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
