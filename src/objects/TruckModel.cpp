#include "objects/TruckModel.h"

#include "XPLMUtilities.h"

#include <exception>
#include <string>

HV_XObject gKLVtheTruck;

// The lifecycle defines the real stream; this weak null stands in until it is linked, so the scene
// objects can be used (and tested) on their own.
__attribute__((weak)) std::ostream* KLVlog = nullptr;

void LoadMeshAndTextures(const char* directory, const char* name, int) {
    try {
        const std::string dir = directory ? directory : "";
        const std::string path = dir + (name ? name : "");
        const bool ok = gKLVtheTruck.LoadXObject(path.c_str());
        if (!KLVlog) return;
        if (ok)
            *KLVlog << "Meshes and textures for object " << path << " succesfuly loaded\n";
        else
            *KLVlog << "[WRNG] Failed to load object " << path << " (path: " << dir << ")\n";
        KLVlog->flush();
    } catch (const std::exception& e) {
        // Called from the host's enable and menu callbacks: nothing may escape.
        XPLMDebugString((std::string("Kalvora: cannot load the truck model: ") + e.what() + "\n").c_str());
    }
}
