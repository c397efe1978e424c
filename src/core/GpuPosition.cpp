#include "core/GpuPosition.h"

double gpuX = 0.0;
double gpuY = 0.0;
double gpuZ = 0.0;

// Plain reads and writes of globals: nothing here can throw across the host boundary.
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
    gpuX = value;
}
void SetGPUPosY(void* /*refcon*/, float value) {
    gpuY = value;
}
void SetGPUPosZ(void* /*refcon*/, float value) {
    gpuZ = value;
}
