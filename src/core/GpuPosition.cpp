#include "core/GpuPosition.h"

#include "core/SimulatorDataRefs.h"

double gpuX = 0.0;
double gpuY = 0.0;
double gpuZ = 0.0;

// Plain reads and writes of globals: nothing here can throw across the host boundary.
// A value another plug-in writes that is not a usable number (NaN, infinite) is ignored.
float GetGPUPosX(void* /*refcon*/) {
    return static_cast<float>(gpuX);
}
float GetGPUPosY(void* /*refcon*/) {
    return static_cast<float>(gpuY);
}
float GetGPUPosZ(void* /*refcon*/) {
    return static_cast<float>(gpuZ);
}
void SetGPUPosX(void* /*refcon*/, float value) {
    if (IsUsableNumber(value)) gpuX = value;
}
void SetGPUPosY(void* /*refcon*/, float value) {
    if (IsUsableNumber(value)) gpuY = value;
}
void SetGPUPosZ(void* /*refcon*/, float value) {
    if (IsUsableNumber(value)) gpuZ = value;
}
