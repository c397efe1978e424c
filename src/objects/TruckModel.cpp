#include "objects/TruckModel.h"

#include <string>

HV_XObject gKLVtheTruck;

// The lifecycle defines the real stream; this weak null stands in until it is linked, so the scene
// objects can be used (and tested) on their own.
__attribute__((weak)) std::ostream* KLVlog = nullptr;

void LoadMeshAndTextures(const char* directory, const char* name, int) {
    const std::string dir = directory ? directory : "";
    const std::string path = dir + (name ? name : "");
    const bool ok = gKLVtheTruck.LoadXObject(path.c_str());
    if (!KLVlog) return;
    if (ok)
        *KLVlog << "Meshes and textures for object " << path << " succesfuly loaded\n";
    else
        *KLVlog << "[WRNG] Failed to load object " << path << " (path: " << dir << ")\n";
    KLVlog->flush();
}
