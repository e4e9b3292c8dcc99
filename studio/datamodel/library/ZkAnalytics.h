// Where usage-analytics records go: a file on this machine that the user can read, or nowhere.
#pragma once

#include <ZkDataModel.h>

namespace zk::datamodel {

// Off until it is switched on. Any thread may call it.
//
// One line of JSON per record, in the order in which the records came:
//   {"time":"2024-05-06T07:08:09.123Z","event":"name","properties":{"first":1,"second":"x"}}
// with the properties in the order in which they were set.
class ZKDATAMODEL_EXPORT Analytics
{
public:
    // Records are appended to that file from now on. False, with the reason in *error (may be null):
    // it cannot be written, and analytics are off.
    static bool switchOn(const QString &path, QString *error = nullptr);
    static void switchOff();
    static bool isOn();
};

} // namespace zk::datamodel
