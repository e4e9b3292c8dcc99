// What "zkstudio export" was asked to do.
#pragma once

#include "ZkCommandOptions.h"

namespace zk::app {

struct ExportOptions : CommandOptions
{
    QString project;
    int clip = 0; // from 1; 0: all
    QString format; // suffix of outputs that are folders, with the dot or "/%05d.png"

    // Where one of so many clips goes to: an output that is a folder gets a file named after the clip;
    // in any other a "%02d" is the number of the clip (from 1). Of a picture sequence the last such
    // pattern is the number of the frame. False, with a text for the user, when several clips would
    // go to one file, or when it is no format.
    bool outputsFor(
        int number, const QString &clipName, int count, QStringList *paths, QString *error) const;

private:
    const Command &command() const override;
    void addOptions(QCommandLineParser *parser) const override;
    bool read(const QCommandLineParser &parser, QString *message) override;
    bool check(QString *message);
    bool readFormat(const QString &text);
};

} // namespace zk::app
