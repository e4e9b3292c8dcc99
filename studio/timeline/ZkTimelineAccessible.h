#pragma once

namespace zk::timeline {

// Makes canvases known to assistive technology. May be called again.
void installTimelineAccessibility();

} // namespace zk::timeline
