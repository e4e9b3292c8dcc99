#include "ZkMarksFile.h"

#include "ZkJsonLocator.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace zk::app {

bool MarkReader::fail(const QString &field, const QString &problem)
{
    m_field = m_path + QLatin1Char('.') + field;
    m_problem = problem;
    return false;
}

bool MarkReader::readKeys(const QStringList &known)
{
    QStringList others = known;
    const QString last = others.takeLast();
    const QStringList keys = m_object.keys();
    for (const QString &key : keys) {
        if (!known.contains(key))
            return fail(key,
                        QStringLiteral("unknown field, allowed are %1 and %2")
                            .arg(others.join(QLatin1String(", ")), last));
    }
    for (const QString &key : known) {
        if (!m_object.contains(key))
            return fail(key, QStringLiteral("is missing"));
    }
    return true;
}

bool MarkReader::readFrame(qint64 *frame)
{
    const double number = value("frame").toDouble(-1);
    if (number < 0 || number != std::floor(number) || number > 1e15)
        return fail(QStringLiteral("frame"), QStringLiteral("must be a whole number from 0"));
    *frame = qint64(number);
    return true;
}

bool MarksFile::loadList(const QString &path,
                         const QString &list,
                         const QString &item,
                         const ReadMark &read,
                         QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: cannot be read: %2").arg(path, file.errorString());
        return false;
    }
    m_path = path;
    m_text = file.readAll();
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(m_text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QStringLiteral("%1:%2: is not valid JSON: %3")
                     .arg(path)
                     .arg(jsonLineAt(m_text, parseError.offset))
                     .arg(parseError.errorString());
        return false;
    }
    const QJsonArray array = document.object().value(list).toArray();
    if (array.isEmpty()) {
        *error = errorAt(list, QStringLiteral("must be a list of at least one %1").arg(item));
        return false;
    }
    for (int i = 0; i < array.size(); ++i) {
        const QString field = QStringLiteral("%1[%2]").arg(list).arg(i);
        const Problem problem = array.at(i).isObject()
            ? read(array.at(i).toObject(), field)
            : Problem {field, QStringLiteral("must be an object")};
        if (!problem.field.isEmpty()) {
            *error = errorAt(problem.field, problem.text);
            return false;
        }
    }
    return true;
}

bool MarksFile::hasFrame(const QString &markPath,
                         qint64 frame,
                         qint64 frameCount,
                         QString *error) const
{
    if (frame < frameCount)
        return true;
    *error = errorAt(markPath + QStringLiteral(".frame"),
                     QStringLiteral("frame %1 is past the end, the clip has frames 0 to %2")
                         .arg(frame)
                         .arg(frameCount - 1));
    return false;
}

QString MarksFile::errorAt(const QString &path, const QString &message) const
{
    return QStringLiteral("%1:%2: %3: %4")
        .arg(m_path)
        .arg(jsonLineOf(m_text, path))
        .arg(path, message);
}

void MarksFile::forgetFile()
{
    m_path.clear();
    m_text.clear();
}

} // namespace zk::app
