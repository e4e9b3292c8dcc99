// What "zkstudio cutout" was asked to do.
#pragma once

#include "ZkObjectOptions.h"

namespace zk::app {

struct CutoutOptions : ObjectOptions
{
    QString preset; // slug; empty: the plain cutout
    QString libraryFolder; // empty: the user's
    QString presetServer;

private:
    const Command &command() const override;
    void addOptions(QCommandLineParser *parser) const override;
    bool read(const QCommandLineParser &parser, QString *message) override;
    bool check(QString *message);
};

} // namespace zk::app
