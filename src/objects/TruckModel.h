// The push-back truck's scene object and the loading of its model by name.
#pragma once

#include "objects/HV_XObject.h"

/// The drawn push-back truck.
extern HV_XObject gKLVtheTruck;

/// Receives each line LoadMeshAndTextures reports, newline included.
typedef void (*TruckModelLogSink_f)(const char* line);
/// Where LoadMeshAndTextures reports: the plug-in hands it its log at start; null (the start value)
/// reports nothing.
void SetTruckModelLogSink(TruckModelLogSink_f sink);

/// Loads the truck model `directory` + `name` (plain concatenation, no extension) into gKLVtheTruck
/// and reports one line saying how it went to the log sink. The third argument is not used.
void LoadMeshAndTextures(const char* directory, const char* name, int reserved);
