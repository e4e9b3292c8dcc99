// One picture that shows what became of a clip: a row per frame, with a cell for every title.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
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
        QVector<QImage> cells;
    };
    explicit ContactSheet(const QStringList &titles)
        : m_titles(titles)
    { }

    void add(const Row &row) { m_rows.append(row); }
    QImage render() const;
    // Complete or absent.
    bool save(const QString &path, QString *error) const;

private:
    const QStringList m_titles;
    QVector<Row> m_rows;
};

} // namespace zk::app
