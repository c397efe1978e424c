// One model file loaded for drawing: OBJ8, or OBJ7 upgraded to OBJ8 on disk at
// its first load, drawn through ObjDraw8 with the host's graphics state.
#pragma once

#include "objects/ObjModel.h"

/// A model read from disk and drawn through the OBJ8 drawer.
class HV_Mesh {
public:
    unsigned int displayList = 0; ///< an (empty) display list made at load; 0 before loading
    XObj8 model;                  ///< the model; empty (no levels) until a load succeeds

    /// Reads `path` as OBJ8, else as OBJ7 (converted and written back over `path` as OBJ8, the
    /// original kept once as `<path>7.bak`); refuses a model that fails validation. On success
    /// makes the display list, stores its name in `displayListOut` and returns true.
    bool LoadMesh(const char* path, int& displayListOut);
    /// Sets the host's graphics state; when `draw`, binds `texture`, colours (1, 1, 1, alpha),
    /// scales by (sx, sy, sz) and draws at level-of-detail distance 500 m. The two reserved
    /// arguments are not used.
    void DisplayMesh(bool draw, bool reserved, int reservedList, int texture, bool lighting, float alpha,
                     float sx, float sy, float sz);
};
