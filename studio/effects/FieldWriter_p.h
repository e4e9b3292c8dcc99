// Not public: the visitor that writes fields into a JSON object.
#pragma once

#include <QColor>
#include <QJsonArray>
#include <QJsonObject>
#include <QVector>

#include <initializer_list>

namespace zk::effects {

class FieldWriter
{
public:
    const QJsonObject &object() const { return m_object; }

    void text(const char *name, const QString &value) { insert(name, value); }
    void number(const char *name, double value, double, double) { insert(name, value); }
    void integer(const char *name, int value, int, int) { insert(name, value); }
    void flag(const char *name, bool value) { insert(name, value); }
    void colour(const char *name, const QColor &value) { insert(name, toText(value)); }
    void colours(const char *name, const QVector<QColor> &values)
    {
        QJsonArray array;
        for (const QColor &value : values)
            array.append(toText(value));
        insert(name, array);
    }
    template<class Enum>
    void choice(const char *name, Enum value, std::initializer_list<const char *> names)
    {
        insert(name, QLatin1String(names.begin()[static_cast<int>(value)]));
    }

private:
    static QString toText(const QColor &colour)
    {
        return colour.name(colour.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
    }
    void insert(const char *name, const QJsonValue &value)
    {
        m_object.insert(QLatin1String(name), value);
    }

    QJsonObject m_object;
};

} // namespace zk::effects
