#include "FieldReader_p.h"

#include <QStringList>

#include <cmath>

namespace zk::effects {

namespace {

// "#rrggbb" or "#aarrggbb"; names are left out so that a file looks the same everywhere.
bool readColour(const QJsonValue &value, QColor *colour)
{
    const QString text = value.toString();
    if (!text.startsWith(QLatin1Char('#')) || (text.size() != 7 && text.size() != 9))
        return false;
    const QColor read(text);
    if (!read.isValid())
        return false;
    *colour = read;
    return true;
}

QString colourExpected()
{
    return QStringLiteral("a colour \"#rrggbb\" or \"#aarrggbb\" is expected");
}

} // namespace

FieldReader::FieldReader(const QJsonValue &value, const QString &path)
    : m_rest(value.toObject())
    , m_path(path)
{
    if (!value.isObject())
        m_error = (path.isEmpty() ? QString() : path + QLatin1String(": "))
            + QStringLiteral("an object is expected");
}

void FieldReader::fail(const char *name, const QString &expectation)
{
    if (!isGood())
        return;
    const QString dot = m_path.isEmpty() ? QString() : QStringLiteral(".");
    m_error = QStringLiteral("%1%2%3: %4").arg(m_path, dot, QLatin1String(name), expectation);
}

QJsonValue FieldReader::take(const char *name)
{
    return m_rest.take(QLatin1String(name));
}

FieldReader FieldReader::child(const QJsonValue &value, const QString &path) const
{
    return FieldReader(value, m_path.isEmpty() ? path : m_path + QLatin1Char('.') + path);
}

void FieldReader::takeError(const FieldReader &child)
{
    if (isGood())
        m_error = child.m_error;
}

void FieldReader::finish()
{
    if (!m_rest.isEmpty())
        fail(m_rest.constBegin().key().toUtf8().constData(), QStringLiteral("unknown field"));
}

void FieldReader::text(const char *name, QString &value)
{
    if (!isGood())
        return;
    value = take(name).toString();
    if (value.isEmpty())
        fail(name, QStringLiteral("a text is expected"));
}

QJsonArray FieldReader::array(const char *name, int maxSize)
{
    if (!wants(name))
        return {};
    const QJsonValue value = take(name);
    if (!value.isArray() || value.toArray().size() > maxSize)
        fail(name, QStringLiteral("a list of at most %1 is expected").arg(maxSize));
    return value.toArray();
}

void FieldReader::number(const char *name, double &value, double min, double max)
{
    if (!wants(name))
        return;
    const QJsonValue read = take(name);
    if (read.isDouble() && read.toDouble() >= min && read.toDouble() <= max)
        value = read.toDouble();
    else
        fail(name, QStringLiteral("a number from %1 to %2 is expected").arg(min).arg(max));
}

void FieldReader::integer(const char *name, int &value, int min, int max)
{
    if (!wants(name))
        return;
    const QJsonValue read = take(name);
    const double number = read.toDouble();
    if (read.isDouble() && number >= min && number <= max && number == std::floor(number))
        value = static_cast<int>(number);
    else
        fail(name, QStringLiteral("a whole number from %1 to %2 is expected").arg(min).arg(max));
}

void FieldReader::flag(const char *name, bool &value)
{
    if (!wants(name))
        return;
    const QJsonValue read = take(name);
    if (read.isBool())
        value = read.toBool();
    else
        fail(name, QStringLiteral("true or false is expected"));
}

void FieldReader::colour(const char *name, QColor &value)
{
    if (wants(name) && !readColour(take(name), &value))
        fail(name, colourExpected());
}

void FieldReader::colours(const char *name, QVector<QColor> &values)
{
    if (!wants(name))
        return;
    const QJsonArray list = array(name, 16);
    QVector<QColor> read(list.size());
    bool isGoodList = !list.isEmpty();
    for (int i = 0; i < list.size(); ++i)
        isGoodList = readColour(list.at(i), &read[i]) && isGoodList;
    if (isGoodList)
        values = read;
    else
        fail(name, QStringLiteral("in each place ") + colourExpected());
}

void FieldReader::readChoice(const char *name,
                             int &index,
                             std::initializer_list<const char *> names)
{
    if (!wants(name))
        return;
    const QString read = take(name).toString();
    QStringList known;
    for (const char *choice : names)
        known.append(QLatin1String(choice));
    if (known.contains(read))
        index = known.indexOf(read);
    else
        fail(name, QStringLiteral("one of %1 is expected").arg(known.join(QLatin1String(", "))));
}

} // namespace zk::effects
