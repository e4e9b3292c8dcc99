// Follows the motion from the holes to pixels that other frames show. Not public.
#pragma once

#include "ZkEraseFrame.h"

#include <vector>

namespace zk::engine {

enum class Direction { Earlier, Later };

// Forgets all sources.
void resetSources(std::vector<EraseFrame> *frames);

// Fills the source maps of this direction. The two directions may run at the same time.
void traceSources(std::vector<EraseFrame> *frames, Direction direction);

// For what no direction reached, after a frame was made up (whose pixels are their own sources);
// sources that were found in the other direction will do. One direction after the other.
void traceLeftSources(std::vector<EraseFrame> *frames, Direction direction);

} // namespace zk::engine
