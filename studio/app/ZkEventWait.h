// Waiting for something that the event loop brings.
#pragma once

#include <functional>

namespace zk::app {

// Runs the event loop until done() is true. False when Ctrl+C came first.
bool waitUntil(const std::function<bool()> &done);

} // namespace zk::app
