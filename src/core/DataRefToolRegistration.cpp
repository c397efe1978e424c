#include "core/DataRefToolRegistration.h"

#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "core/CallbackGuard.h"
#include "core/PublishedDataRefs.h"
#include "truck/InstancedDrawing.h"

namespace {

constexpr float kNextFrame = -1.0f; // flight-loop interval: one frame from now
constexpr float kStop = 0.0f;       // flight loop: do not call again

std::vector<std::string> AllNames() {
    std::vector<std::string> names;
    for (int i = 0; i < PublishedDataRefCount(); ++i)
        names.emplace_back(PublishedDataRefName(i));
    for (int i = 0; i < kTruckAnimationDataRefCount; ++i)
        names.emplace_back(TruckAnimationDataRefName(i));
    return names;
}

float RegisterWithBrowsersCallBack(float /*sinceLastCall*/, float /*sinceLastLoop*/, int /*counter*/,
                                   void* /*refcon*/) {
    GuardCallback("dataref browser registration", [] { SendDataRefNamesToBrowsers(AllNames()); });
    return kStop;
}

} // namespace

int SendDataRefNamesToBrowsers(const std::vector<std::string>& names) {
    int sent = 0;
    for (const char* signature : {kDataRefToolSignature, kDataRefEditorSignature}) {
        const XPLMPluginID browser = XPLMFindPluginBySignature(signature);
        // A missing browser answers XPLM_NO_PLUGIN_ID, and sending to it would reach every plug-in.
        if (browser == XPLM_NO_PLUGIN_ID) continue;
        for (const std::string& name : names) {
            XPLMSendMessageToPlugin(browser, kMsgRegisterDataRef, const_cast<char*>(name.c_str()));
            ++sent;
        }
    }
    return sent;
}

void ScheduleDataRefToolRegistration() {
    XPLMUnregisterFlightLoopCallback(RegisterWithBrowsersCallBack, nullptr);
    XPLMRegisterFlightLoopCallback(RegisterWithBrowsersCallBack, kNextFrame, nullptr);
}

void CancelDataRefToolRegistration() {
    XPLMUnregisterFlightLoopCallback(RegisterWithBrowsersCallBack, nullptr);
}
