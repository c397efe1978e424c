// Drawing one OBJ8 object with OpenGL fixed-function calls, in whatever
// model-view transform the caller has set up. Everything that depends on the
// host (texture binding, panel and lighting set-up, the values that drive
// animations) goes through a table of callbacks with defaults for use inside
// the simulator.
#pragma once

#include "objects/ObjModel.h"

/// The host-dependent steps of drawing; every callback receives the caller's `ref` last.
struct ObjDrawFuncs_t {
    void (*SetupPoly)(void* ref);                 ///< before textured triangles outside cockpit mode
    void (*SetupLine)(void* ref);                 ///< before lines
    void (*SetupLight)(void* ref);                ///< before light points
    void (*SetupMovie)(void* ref);                ///< carried for hosts; never called by ObjDraw8
    void (*SetupPanel)(void* ref);                ///< before triangles in cockpit mode
    void (*TexCoord)(const float* st, void* ref); ///< carried for hosts; never called by ObjDraw8
    /// Binds the texture-coordinate array (same arguments as glTexCoordPointer).
    void (*TexCoordPointer)(int size, unsigned long type, long stride, const void* pointer, void* ref);
    /// The driving value of an animation step named by `dataref` (keys at value1 and value2).
    float (*GetAnimParam)(const char* dataref, float value1, float value2, void* ref);
};

/// Enables GL_TEXTURE_2D.
void Default_SetupPoly(void* ref);
/// Disables GL_TEXTURE_2D.
void Default_SetupLine(void* ref);
/// Disables GL_TEXTURE_2D.
void Default_SetupLight(void* ref);
/// Enables GL_TEXTURE_2D.
void Default_SetupMovie(void* ref);
/// Enables GL_TEXTURE_2D.
void Default_SetupPanel(void* ref);
/// glTexCoord2fv(st).
void Default_TexCoord(const float* st, void* ref);
/// glTexCoordPointer(size, type, stride, pointer).
void Default_TexCoordPointer(int size, unsigned long type, long stride, const void* pointer, void* ref);
/// Reads one simulator value through a single process-wide cached handle: the first call looks
/// `dataref` up and returns 0; every later call reads that first dataref, whatever name it gets.
float Default_GetAnimParam(const char* dataref, float value1, float value2, void* ref);
/// Empties Default_GetAnimParam's slot (a new host): its next call looks its dataref up again.
void ForgetDefaultAnimParam();

/// Draws `obj` as seen from `dist` metres (chooses the level of detail); null `funcs` = the defaults.
/// An object without levels draws nothing.
void ObjDraw8(const XObj8& obj, float dist, ObjDrawFuncs_t* funcs, void* ref);
