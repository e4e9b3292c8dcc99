// Not public: the visitor that reads fields from a JSON value.
#pragma once

#include <QColor>
#include <QJsonArray>
#include <QJsonObject>
#include <QVector>

#include <initializer_list>

namespace zk::effects {

// Takes fields out of one JSON object. A field that is absent leaves the value alone. The first
// fault is kept, with the path of its field, and everything after it does nothing.
class FieldReader
{
public:
    // path is that of the object itself, empty for the outermost.
    FieldReader(const QJsonValue &value, const QString &path);

    bool isGood() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }
    void fail(const char *name, const QString &expectation);

    bool has(const char *name) const { return m_rest.contains(QLatin1String(name)); }
    QJsonValue take(const char *name);
    FieldReader child(const QJsonValue &value, const QString &path) const;
    void takeError(const FieldReader &child);
    // What is left is unknown, and a fault.
    void finish();

    void text(const char *name, QString &value); // must be there and not be empty
    QJsonArray array(const char *name, int maxSize);
    void number(const char *name, double &value, double min, double max);
    void integer(const char *name, int &value, int min, int max);
    void flag(const char *name, bool &value);
    void colour(const char *name, QColor &value);
    void colours(const char *name, QVector<QColor> &values);
    template<class Enum>
    void choice(const char *name, Enum &value, std::initializer_list<const char *> names)
    {
        int index = static_cast<int>(value);
        readChoice(name, index, names);
        value = static_cast<Enum>(index);
    }

private:
    void readChoice(const char *name, int &index, std::initializer_list<const char *> names);
    bool wants(const char *name) const { return isGood() && has(name); }

    QJsonObject m_rest;
    QString m_path;
    QString m_error;
};

} // namespace zk::effects
