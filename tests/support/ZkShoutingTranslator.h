// A language that every text has: upper case.
#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace zk::test {

// Is the language of the application while it lives.
class ShoutingTranslator : public QTranslator
{
public:
    ShoutingTranslator() { QCoreApplication::installTranslator(this); }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return QString::fromUtf8(text).toUpper();
    }
    bool isEmpty() const override { return false; }
};

} // namespace zk::test
