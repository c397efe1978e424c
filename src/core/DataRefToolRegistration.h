// Makes Kalvora's published datarefs known to the dataref browsers other
// plug-ins offer: once all plug-ins are loaded, each name is sent with the
// browser's "register dataref" message, only to a browser that is present.
#pragma once

#include <string>
#include <vector>

/// Signature of the DataRefTool plug-in.
constexpr const char* kDataRefToolSignature = "com.leecbaker.datareftool";
/// Signature of the DataRefEditor plug-in.
constexpr const char* kDataRefEditorSignature = "xplanesdk.examples.DataRefEditor";
/// Message asking a dataref browser to list a dataref; the parameter is the NUL-terminated name.
constexpr int kMsgRegisterDataRef = 0x01000000;

/// Sends each name to every browser present; returns how many messages went out.
int SendDataRefNamesToBrowsers(const std::vector<std::string>& names);
/// Registers a flight loop that, at the next frame, sends every published dataref name once.
void ScheduleDataRefToolRegistration();
/// Removes the flight loop if it has not run yet.
void CancelDataRefToolRegistration();
