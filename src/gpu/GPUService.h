// The ground power unit: whether it is connected to the aircraft. The service
// that brings, runs and removes it builds on this state.
#pragma once

/// True while the GPU is connected (from the request until it is taken away); a push-back is refused then.
extern bool gKLVisGPUpresent;
