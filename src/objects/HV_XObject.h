// A textured 3-D model the plug-in draws itself in the simulator's world (the
// push-back truck, the ground power unit): its mesh, day and night textures,
// place in the local OpenGL frame (metres), attitude (degrees), scale, opacity
// and visibility.
#pragma once

#include "images/Texture.h"
#include "objects/HV_Mesh.h"

/// A scene object drawn from a 3-D draw callback.
class HV_XObject {
public:
    float x = 0.0f, y = 0.0f, z = 0.0f;                ///< local OpenGL position, metres
    float pitch = 0.0f, roll = 0.0f, heading = 0.0f;   ///< degrees
    bool visible = false;                              ///< shown by the last ShowXObject/SetVisibility
    int maxDistance = 3000;                            ///< metres from the camera; 0 = never culled
    float opacity = 0.7f;                              ///< alpha of the drawing colour
    float scaleX = 1.0f, scaleY = 1.0f, scaleZ = 1.0f; ///< model scale
    int dayTexture = 0;                                ///< texture name of the day picture
    int litTexture = -1;                               ///< texture name of the night picture; -1 none
    int displayList = 0;                               ///< filled by HV_Mesh::LoadMesh
    HV_Mesh mesh;                                      ///< the model
    HV_Texture texture{false};                         ///< loader of both pictures
    void* lightsOnRef = nullptr; ///< the simulator's share of lights on (0..1), looked up at load

    /// Loads basePath + ".obj" and its day (and, if any, night) texture; false when the model or
    /// the day texture cannot be loaded.
    bool LoadXObject(const char* basePath);
    /// Stores `show` as the visible flag; when true draws the object now (from a draw callback).
    void ShowXObject(bool show);
    /// Places the object at a world position (degrees, metres above sea level).
    void PositionWorld(double lat, double lon, double alt);
    /// Places the object in the local OpenGL frame, metres.
    void PositionLocal(float px, float py, float pz);
    /// Sets the attitude, degrees (heading clockwise from north, i.e. from -Z).
    void Attitude(float newPitch, float newRoll, float newHeading);
    /// The visible flag.
    bool IsVisible();
    /// Sets the visible flag without drawing; returns true.
    bool SetVisibility(bool show);
    /// Deletes both textures.
    void KillXObject();
};

/// Percentage of lights on (0..1) above which an object with a night texture shines by itself.
constexpr float kNightLightsThreshold = 0.62f;
