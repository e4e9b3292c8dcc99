// One picture that shows what was cut out: a row per frame, with source, overlay, matte and result.
#pragma once

#include <QImage>
#include <QString>
#include <QVector>

namespace zk::app {

class ContactSheet
{
public:
    // The frames that a sheet of a clip shows: evenly spread, the first and the last among them.
    static QVector<qint64> framesOf(qint64 frameCount);

    struct Row
    {
        qint64 frame;
        QImage source;
        QImage overlay;
        QImage matte;
        QImage result;
    };
    void add(const Row &row) { m_rows.append(row); }
    QImage render() const;
    // Complete or absent.
    bool save(const QString &path, QString *error) const;

private:
    QVector<Row> m_rows;
};

} // namespace zk::app
