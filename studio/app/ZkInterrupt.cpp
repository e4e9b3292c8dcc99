#include "ZkInterrupt.h"

#include <csignal>

namespace zk::app {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void onSignal(int)
{
    interrupted = 1;
}

} // namespace

void catchInterrupts()
{
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

bool isInterrupted()
{
    return interrupted != 0;
}

} // namespace zk::app
