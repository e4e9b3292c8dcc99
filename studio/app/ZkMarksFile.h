// What files of strokes and of boxes have in common: a list of objects, each with a frame.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

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
    // Fills the marks, which are empty when it fails, with what readers make of the list's objects. False
    // with an error "FILE:LINE: FIELD: what is wrong" when the file cannot be read, has no such list, or
    // a reader finds something wrong.
    template<typename Reader, typename Mark>
    bool loadMarks(const QString &path,
                   const QString &list,
                   const QString &item,
                   QVector<Mark> *marks,
                   QString *error)
    {
        marks->clear();
        const auto read = [marks](const QJsonObject &object, const QString &field) {
            Mark mark;
            Reader reader(object, field);
            const bool isGood = reader.read(&mark);
            marks->append(mark);
            return isGood ? Problem() : Problem {reader.field(), reader.problem()};
        };
        const bool isLoaded = loadList(path, list, item, read, error);
        if (!isLoaded)
            marks->clear();
        return isLoaded;
    }
    // False when the clip has no such frame.
    bool hasFrame(const QString &markPath, qint64 frame, qint64 frameCount, QString *error) const;
    QString errorAt(const QString &path, const QString &message) const;
    void forgetFile();

private:
    struct Problem
    {
        QString field; // empty: none
        QString text;
    };
    // Gets each object with its path, such as "strokes[2]".
    using ReadMark = std::function<Problem(const QJsonObject &object, const QString &path)>;

    bool loadList(const QString &path,
                  const QString &list,
                  const QString &item,
                  const ReadMark &read,
                  QString *error);

    QString m_path;
    QByteArray m_text;
};

} // namespace zk::app
