#include "objects/TruckModel.h"

#include "XPLMUtilities.h"

#include <exception>
#include <string>

HV_XObject gKLVtheTruck;

namespace {
TruckModelLogSink_f gLogSink = nullptr;
} // namespace

void SetTruckModelLogSink(TruckModelLogSink_f sink) {
    gLogSink = sink;
}

void LoadMeshAndTextures(const char* directory, const char* name, int) {
    try {
        const std::string dir = directory ? directory : "";
        const std::string path = dir + (name ? name : "");
        const bool ok = gKLVtheTruck.LoadXObject(path.c_str());
        if (!gLogSink) return;
        if (ok)
            gLogSink(("Meshes and textures for object " + path + " succesfuly loaded\n").c_str());
        else
            gLogSink(("[WRNG] Failed to load object " + path + " (path: " + dir + ")\n").c_str());
    } catch (const std::exception& e) {
        // Called from the host's enable and menu callbacks: nothing may escape.
        XPLMDebugString((std::string("Kalvora: cannot load the truck model: ") + e.what() + "\n").c_str());
    }
}
