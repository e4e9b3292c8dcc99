// What "zkstudio erase" was asked to do.
#pragma once

#include "ZkObjectOptions.h"

#include "ZkEraseJob.h"

namespace zk::app {

struct EraseOptions : ObjectOptions
{
    // One of this, strokesFile and matteFile says what the objects are.
    QString boxesFile;
    bool isPreview = false; // show what would be erased instead

    QString output() const { return outputs.value(0); }
    // Only now it is known what suits: a single frame may become a picture. False, with what is wrong.
    bool resultFor(qint64 frameCount, erasing::EraseOutput *result, QString *message) const;

private:
    const Command &command() const override;
    void addOptions(QCommandLineParser *parser) const override;
    bool read(const QCommandLineParser &parser, QString *message) override;
    bool check(QString *message);
};

} // namespace zk::app
