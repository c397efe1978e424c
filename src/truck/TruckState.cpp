#include "truck/TruckState.h"

#include "core/SimulatorDataRefs.h"

double gKLVTruckX = 0.0;
double gKLVTruckY = 0.0;
double gKLVTruckZ = 0.0;
float myTruckHeading = 0.0f;
float theOffset = 0.0f;

// Plain reads and writes of globals: nothing here can throw across the host boundary.
// Another plug-in may move the truck; the truck sequence overwrites it at its next step.
// A value that is not a usable number (NaN, infinite, beyond single precision) is ignored.
double GetTruckPosX(void* /*refcon*/) {
    return gKLVTruckX;
}
double GetTruckPosY(void* /*refcon*/) {
    return gKLVTruckY;
}
double GetTruckPosZ(void* /*refcon*/) {
    return gKLVTruckZ;
}
float GetTruckHdg(void* /*refcon*/) {
    return myTruckHeading;
}
void SetTruckPosX(void* /*refcon*/, double value) {
    if (IsUsableNumber(value)) gKLVTruckX = value;
}
void SetTruckPosY(void* /*refcon*/, double value) {
    if (IsUsableNumber(value)) gKLVTruckY = value;
}
void SetTruckPosZ(void* /*refcon*/, double value) {
    if (IsUsableNumber(value)) gKLVTruckZ = value;
}
void SetTruckHdg(void* /*refcon*/, float value) {
    if (IsUsableNumber(value)) myTruckHeading = value;
}
