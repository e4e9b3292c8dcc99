#include "ZkJsonLocator.h"

#include <QRegularExpression>

#include <cctype>
#include <cstring>

namespace zk::app {

namespace {

// Walks over valid JSON without building values.
class Scanner
{
public:
    explicit Scanner(const QByteArray &text)
        : m_text(text)
    {
        skipSpace();
    }

    int position() const { return m_position; }

    // Moves to the value of that key or index in the container at the position. False, and nothing
    // has moved, when it is not there.
    bool enter(const QString &step)
    {
        const int start = m_position;
        const bool found =
            peek() == '{' ? enterKey(step) : peek() == '[' && enterIndex(step.toInt());
        if (!found)
            m_position = start;
        return found;
    }

private:
    char peek() const { return m_position < m_text.size() ? m_text.at(m_position) : '\0'; }

    void skipSpace()
    {
        while (std::isspace(static_cast<unsigned char>(peek())))
            ++m_position;
    }

    void skipPunctuation()
    {
        ++m_position;
        skipSpace();
    }

    QString readString()
    {
        const int start = ++m_position;
        while (peek() != '"' && peek() != '\0')
            m_position += peek() == '\\' ? 2 : 1;
        const QString text = QString::fromUtf8(m_text.mid(start, m_position - start));
        skipPunctuation();
        return text;
    }

    void skipScalar()
    {
        while (peek() != '\0' && !std::strchr(",]}", peek()))
            ++m_position;
    }

    void skipContainer()
    {
        int depth = 0;
        do {
            if (peek() == '"') {
                readString();
                continue;
            }
            depth += std::strchr("[{", peek()) ? 1 : std::strchr("]}", peek()) ? -1 : 0;
            ++m_position;
        } while (depth > 0 && peek() != '\0');
        skipSpace();
    }

    void skipValue()
    {
        if (peek() == '"')
            readString();
        else if (peek() == '{' || peek() == '[')
            skipContainer();
        else
            skipScalar();
    }

    bool enterKey(const QString &key)
    {
        skipPunctuation();
        while (peek() == '"') {
            const QString name = readString();
            skipPunctuation(); // the colon
            if (name == key)
                return true;
            skipValue();
            if (peek() == ',')
                skipPunctuation();
        }
        return false;
    }

    bool enterIndex(int index)
    {
        skipPunctuation();
        while (peek() != ']' && peek() != '\0') {
            if (index-- == 0)
                return true;
            skipValue();
            if (peek() == ',')
                skipPunctuation();
        }
        return false;
    }

    const QByteArray &m_text;
    int m_position = 0;
};

} // namespace

int jsonLineAt(const QByteArray &text, int offset)
{
    return 1 + text.left(offset).count('\n');
}

int jsonLineOf(const QByteArray &text, const QString &path)
{
    static const QRegularExpression separator(QStringLiteral("[.\\[\\]]+"));
    Scanner scanner(text);
    const QStringList steps = path.split(separator, Qt::SkipEmptyParts);
    for (const QString &step : steps) {
        if (!scanner.enter(step))
            break;
    }
    return jsonLineAt(text, scanner.position());
}

} // namespace zk::app
