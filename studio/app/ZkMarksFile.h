// What files of strokes and of boxes have in common: a list of objects, each with a frame.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace zk::app {

// Reads one object of the list; the first problem is kept with the field that has it.
class MarkReader
{
public:
    MarkReader(const QJsonObject &object, const QString &path)
        : m_object(object)
        , m_path(path)
    { }

    QString field() const { return m_field; }
    QString problem() const { return m_problem; }

protected:
    bool fail(const QString &field, const QString &problem);
    // Whether it has exactly these keys.
    bool readKeys(const QStringList &known);
    bool readFrame(qint64 *frame);
    QJsonValue value(const char *key) const { return m_object.value(QLatin1String(key)); }

private:
    QJsonObject m_object;
    QString m_path;
    QString m_field;
    QString m_problem;
};

class MarksFile
{
protected:
    struct Problem
    {
        QString field; // empty: none
        QString text;
    };
    // Gets each object with its path, such as "strokes[2]".
    using ReadMark = std::function<Problem(const QJsonObject &object, const QString &path)>;

    // False with an error "FILE:LINE: FIELD: what is wrong" when the file cannot be read, has no such
    // list, or the function finds something wrong.
    bool loadList(const QString &path,
                  const QString &list,
                  const QString &item,
                  const ReadMark &read,
                  QString *error);
    // False when the clip has no such frame.
    bool hasFrame(const QString &markPath, qint64 frame, qint64 frameCount, QString *error) const;
    QString errorAt(const QString &path, const QString &message) const;
    void forgetFile();

private:
    QString m_path;
    QByteArray m_text;
};

} // namespace zk::app
