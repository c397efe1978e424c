#include "core/PublishedDataRefs.h"

#include "core/GpuPosition.h"
#include "core/PushbackControl.h"
#include "core/PushbackStatus.h"
#include "gpu/GPUService.h"
#include "truck/TruckState.h"

XPLMDataRef gKLVStatus = nullptr;
XPLMDataRef gKLVGPUStatus = nullptr;
XPLMDataRef gTruckPositionX = nullptr;
XPLMDataRef gTruckPositionY = nullptr;
XPLMDataRef gTruckPositionZ = nullptr;
XPLMDataRef gTruckPositionHdg = nullptr;
XPLMDataRef gGPUPositionX = nullptr;
XPLMDataRef gGPUPositionY = nullptr;
XPLMDataRef gGPUPositionZ = nullptr;

namespace {

/// One published dataref; only the accessors of its own type are set.
struct PublishedDataRef {
    XPLMDataRef* handle;
    const char* name;
    XPLMDataTypeID type;
    XPLMGetDatai_f readInt;
    XPLMSetDatai_f writeInt;
    XPLMGetDataf_f readFloat;
    XPLMSetDataf_f writeFloat;
    XPLMGetDatad_f readDouble;
    XPLMSetDatad_f writeDouble;
};

const PublishedDataRef kPublished[] = {
    {&gKLVStatus, "halvern/kalvora/PBstatus", xplmType_Int, GetPBStatus, SetPBStatus, nullptr, nullptr,
     nullptr, nullptr},
    {&gKLVGPUStatus, "halvern/kalvora/GPUstatus", xplmType_Int, DataRefGetGPUStatus, DataRefSetGPUStatus,
     nullptr, nullptr, nullptr, nullptr},
    {&gTruckPositionX, "halvern/kalvora/truck/position_ogl_x", xplmType_Double, nullptr, nullptr, nullptr,
     nullptr, GetTruckPosX, SetTruckPosX},
    {&gTruckPositionY, "halvern/kalvora/truck/position_ogl_y", xplmType_Double, nullptr, nullptr, nullptr,
     nullptr, GetTruckPosY, SetTruckPosY},
    {&gTruckPositionZ, "halvern/kalvora/truck/position_ogl_z", xplmType_Double, nullptr, nullptr, nullptr,
     nullptr, GetTruckPosZ, SetTruckPosZ},
    {&gTruckPositionHdg, "halvern/kalvora/truck/position_hdg", xplmType_Float, nullptr, nullptr, GetTruckHdg,
     SetTruckHdg, nullptr, nullptr},
    {&gGPUPositionX, "halvern/kalvora/GPU/position_ogl_x", xplmType_Float, nullptr, nullptr, GetGPUPosX,
     SetGPUPosX, nullptr, nullptr},
    {&gGPUPositionY, "halvern/kalvora/GPU/position_ogl_y", xplmType_Float, nullptr, nullptr, GetGPUPosY,
     SetGPUPosY, nullptr, nullptr},
    {&gGPUPositionZ, "halvern/kalvora/GPU/position_ogl_z", xplmType_Float, nullptr, nullptr, GetGPUPosZ,
     SetGPUPosZ, nullptr, nullptr},
};

constexpr int kWritable = 1; // every published dataref accepts writes from other plug-ins

} // namespace

void RegisterPublishedDataRefs() {
    for (const PublishedDataRef& ref : kPublished) {
        *ref.handle =
            XPLMRegisterDataAccessor(ref.name, ref.type, kWritable, ref.readInt, ref.writeInt, ref.readFloat,
                                     ref.writeFloat, ref.readDouble, ref.writeDouble, nullptr, nullptr,
                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    }
}

void UnregisterPublishedDataRefs() {
    for (const PublishedDataRef& ref : kPublished) {
        if (*ref.handle != nullptr) {
            XPLMUnregisterDataAccessor(*ref.handle);
            *ref.handle = nullptr;
        }
    }
}

int PublishedDataRefCount() {
    return static_cast<int>(sizeof kPublished / sizeof kPublished[0]);
}

const char* PublishedDataRefName(int index) {
    return index >= 0 && index < PublishedDataRefCount() ? kPublished[index].name : nullptr;
}
