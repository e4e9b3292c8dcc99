// Exit codes of the command line, documented in docs/cli.md.
#pragma once

namespace zk::app {

enum class ExitCode {
    Success = 0,
    InternalError = 1,
    Usage = 2, // the command line itself
    BadInput = 3, // the clip cannot be read
    BadStrokes = 4, // the strokes file or the given matte
    NothingFound = 5, // no object, or tracking failed
    BadOutput = 6, // the output cannot be written
    BadPreset = 7, // an unknown preset, or one that could not be fetched
    BadModel = 8, // a network that cannot be used
    Interrupted = 130,
};

} // namespace zk::app
