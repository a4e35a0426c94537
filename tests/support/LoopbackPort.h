#pragma once

namespace autoscene::test {

// A loopback port that was free a moment ago and that nobody listens on now.
int unusedLoopbackPort();

}  // namespace autoscene::test
