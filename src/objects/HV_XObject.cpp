#include "objects/HV_XObject.h"

#include "utils/MathUtils.h"

#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"
#include "XPLMUtilities.h"

#include <GL/gl.h>

#include <exception>
#include <string>

namespace {

/// Image kinds a scene object's day texture can come from; the night texture must be the same kind.
enum class PictureKind { None, Png, Tga, Bmp };

/// `name` with its last three characters replaced by `ext` (a name shorter than three loses all).
std::string ReplaceLastThree(const std::string& name, const char* ext) {
    const size_t keep = name.size() >= 3 ? name.size() - 3 : 0;
    return name.substr(0, keep) + ext;
}

/// Tries each candidate in turn with `load`; true at the first that loads.
template <typename Load> bool LoadFirst(std::initializer_list<std::string> paths, Load load) {
    for (const std::string& p : paths)
        if (load(p.c_str())) return true;
    return false;
}

constexpr const char* kLightsOnDataRef = "sim/graphics/scenery/percent_lights_on";

} // namespace

bool HV_XObject::LoadXObject(const char* basePath) {
    try {
        if (!basePath) return false;
        const std::string base = basePath;
        lightsOnRef = XPLMFindDataRef(kLightsOnDataRef);
        if (!mesh.LoadMesh((base + ".obj").c_str(), displayList)) return false;

        texture.SetAsTexture(true);
        auto png = [this](const char* p) { return texture.LoadPNG(p); };
        auto tga = [this](const char* p) { return texture.LoadTGA(p); };
        auto bmp = [this](const char* p) { return texture.LoadBMP(p); };
        const std::string dayPng = base + ".png", dayPNG = base + ".PNG";
        PictureKind kind = PictureKind::None;
        if (LoadFirst({dayPng, dayPNG}, png))
            kind = PictureKind::Png;
        else if (LoadFirst({ReplaceLastThree(dayPng, "tga"), ReplaceLastThree(dayPNG, "TGA")}, tga))
            kind = PictureKind::Tga;
        else if (LoadFirst({ReplaceLastThree(dayPng, "bmp"), ReplaceLastThree(dayPNG, "BMP")}, bmp))
            kind = PictureKind::Bmp;
        if (kind == PictureKind::None) return false;
        dayTexture = texture.textureID;

        // The TGA and BMP night names carry no "LIT" and lose the base name's last three
        // characters: that is the naming users' models follow.
        bool lit = false;
        if (kind == PictureKind::Png)
            lit = LoadFirst({base + "LIT.png", base + "LIT.PNG"}, png);
        else if (kind == PictureKind::Tga)
            lit = LoadFirst({ReplaceLastThree(base, "tga"), ReplaceLastThree(base, "TGA")}, tga);
        else
            lit = LoadFirst({ReplaceLastThree(base, "bmp"), ReplaceLastThree(base, "BMP")}, bmp);
        litTexture = lit ? texture.textureID : -1;
        return true;
    } catch (const std::exception& e) {
        XPLMDebugString((std::string("Kalvora: cannot load object: ") + e.what() + "\n").c_str());
        return false;
    }
}

void HV_XObject::ShowXObject(bool show) {
    visible = show;
    if (!show) return;
    if (maxDistance != 0) {
        XPLMCameraPosition_t cam{};
        XPLMReadCameraPosition(&cam);
        if (HV_MathUtils::Math_Get3DDistance(x, y, z, cam.x, cam.y, cam.z) > static_cast<float>(maxDistance))
            return;
    }
    glPushMatrix();
    // Column-major identity with the object's position as its translation.
    const GLfloat place[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
    glMultMatrixf(place);
    glRotatef(-heading, 0.0f, 1.0f, 0.0f);
    glRotatef(pitch, 1.0f, 0.0f, 0.0f);
    glRotatef(-roll, 0.0f, 0.0f, 1.0f);

    if (!lightsOnRef) lightsOnRef = XPLMFindDataRef(kLightsOnDataRef);
    const float lightsOn = lightsOnRef ? XPLMGetDataf(lightsOnRef) : 0.0f;
    const bool night = litTexture != -1 && lightsOn > kNightLightsThreshold;
    mesh.DisplayMesh(true, true, displayList, night ? litTexture : dayTexture, !night, opacity, scaleX,
                     scaleY, scaleZ);
    glEnable(GL_CULL_FACE);
    glPopMatrix();
}

void HV_XObject::PositionWorld(double lat, double lon, double alt) {
    double lx = 0, ly = 0, lz = 0;
    XPLMWorldToLocal(lat, lon, alt, &lx, &ly, &lz);
    PositionLocal(static_cast<float>(lx), static_cast<float>(ly), static_cast<float>(lz));
}

void HV_XObject::PositionLocal(float px, float py, float pz) {
    x = px;
    y = py;
    z = pz;
}

void HV_XObject::Attitude(float newPitch, float newRoll, float newHeading) {
    pitch = newPitch;
    roll = newRoll;
    heading = newHeading;
}

bool HV_XObject::IsVisible() {
    return visible;
}

bool HV_XObject::SetVisibility(bool show) {
    visible = show;
    return true;
}

void HV_XObject::KillXObject() {
    if (dayTexture > 0) texture.DeleteTexture(dayTexture);
    if (litTexture > 0) texture.DeleteTexture(litTexture);
    dayTexture = 0;
    litTexture = -1;
}
