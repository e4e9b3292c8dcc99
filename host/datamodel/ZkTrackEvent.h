// Usage-analytics records.
#pragma once

#include "../ZkGlobal.h"

#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>

// A name and key/value properties in the order in which they were set first.
class ZKDATAMODEL_EXPORT ZkTrackEvent
{
public:
    explicit ZkTrackEvent(const QString &name);
    virtual ~ZkTrackEvent();

    QString name() const { return m_name; }
    QVector<QPair<QString, QVariant>> properties() const { return m_properties; }
    // A key that is there already keeps its place.
    void setProperty(const QString &key, const QVariant &value);
    // Hands the record to the host at once; it is dropped unless the user has allowed analytics.
    void sendEvent() const;

private:
    QString m_name;
    QVector<QPair<QString, QVariant>> m_properties;
};
