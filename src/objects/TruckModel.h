// The push-back truck's scene object and the loading of its model by name.
#pragma once

#include "objects/HV_XObject.h"

#include <ostream>

/// The drawn push-back truck.
extern HV_XObject gKLVtheTruck;

/// The plug-in's log stream, opened at start by the lifecycle; null until then (nothing is written).
extern std::ostream* KLVlog;

/// Loads the truck model `directory` + `name` (plain concatenation, no extension) into gKLVtheTruck
/// and writes one line saying how it went to KLVlog. The third argument is not used.
void LoadMeshAndTextures(const char* directory, const char* name, int reserved);
