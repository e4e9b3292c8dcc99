// Ctrl+C as a flag that long work asks for.
#pragma once

namespace zk::app {

// From now on Ctrl+C, and a request to terminate, only set the flag.
void catchInterrupts();
bool isInterrupted();

} // namespace zk::app
