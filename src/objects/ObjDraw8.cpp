#include "objects/ObjDraw8.h"

#include "XPLMDataAccess.h"

#include <GL/gl.h>

#include <cstdio>

namespace {

/// Current set-up: which kind of geometry the last set-up callback prepared for.
enum Setup { kSetupNone = 0, kSetupPoly = 1, kSetupLine = 2, kSetupLight = 3, kSetupPanel = 4 };
/// Which pool the vertex arrays point into.
enum Arrays { kArraysNone = 0, kArraysTris = 1, kArraysLines = 2, kArraysLights = 3 };

constexpr GLsizei kTrisStrideBytes = 8 * sizeof(float);  ///< x y z nx ny nz s t
constexpr GLsizei kLinesStrideBytes = 6 * sizeof(float); ///< x y z r g b
constexpr int kNormalOffset = 3;                         ///< floats before the normal
constexpr int kTexCoordOffset = 6;                       ///< floats before s, t
constexpr int kColourOffset = 3;                         ///< floats before r, g, b
constexpr float kPolyOffsetFactorPerUnit = -5.0f;        ///< ATTR_poly_os n -> factor -5n
constexpr float kPolyOffsetUnits = -1.0f;
constexpr GLint kShininessExponent = 128; ///< ATTR_shiny_rat always sets the sharpest highlight

const ObjDrawFuncs_t sDefault = {Default_SetupPoly,       Default_SetupLine,   Default_SetupLight,
                                 Default_SetupMovie,      Default_SetupPanel,  Default_TexCoord,
                                 Default_TexCoordPointer, Default_GetAnimParam};

/// The one cached handle of Default_GetAnimParam (kept on purpose: a single slot).
XPLMDataRef myDataRef = nullptr;

/// Reports an OpenGL error on standard output; drawing goes on.
void CheckGL() {
    const GLenum err = glGetError();
    if (err != GL_NO_ERROR) std::printf("GL ERROR: %d\n", static_cast<int>(err));
}

/// Linear interpolation between two keys by the driving value, not clamped (extrapolates).
float Interpolate(float a, float b, float v, float value0, float value1) {
    if (value1 == value0) return a;
    return a + (b - a) * (v - value0) / (value1 - value0);
}

/// The bookkeeping of one ObjDraw8 call.
struct DrawState {
    int setup = kSetupNone;
    int arrays = kArraysNone;
    bool cockpit = false;
    float colour[3] = {1.0f, 1.0f, 1.0f};
};

void BindColouredPool(const ObjPointPool& pool, int which, DrawState& st) {
    if (st.arrays == which) return;
    glVertexPointer(3, GL_FLOAT, kLinesStrideBytes, pool.data.data());
    CheckGL();
    glColorPointer(3, GL_FLOAT, kLinesStrideBytes, pool.data.data() + kColourOffset);
    CheckGL();
    st.arrays = which;
}

void EnableColouredClientStates() {
    glEnableClientState(GL_VERTEX_ARRAY);
    CheckGL();
    glDisableClientState(GL_NORMAL_ARRAY);
    CheckGL();
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    CheckGL();
    glEnableClientState(GL_COLOR_ARRAY);
    CheckGL();
}

void DrawTris(const XObj8& obj, const XObjCmd8& cmd, ObjDrawFuncs_t* f, void* ref, DrawState& st) {
    const int want = st.cockpit ? kSetupPanel : kSetupPoly;
    if (want != st.setup) {
        if (want == kSetupPanel)
            f->SetupPanel(ref);
        else
            f->SetupPoly(ref);
        CheckGL();
        st.setup = want;
    }
    if (st.arrays != kArraysTris) {
        const float* base = obj.geoTris.data.data();
        glVertexPointer(3, GL_FLOAT, kTrisStrideBytes, base);
        CheckGL();
        glNormalPointer(GL_FLOAT, kTrisStrideBytes, base + kNormalOffset);
        CheckGL();
        f->TexCoordPointer(2, GL_FLOAT, kTrisStrideBytes, base + kTexCoordOffset, ref);
        CheckGL();
        st.arrays = kArraysTris;
    }
    glEnableClientState(GL_VERTEX_ARRAY);
    CheckGL();
    glEnableClientState(GL_NORMAL_ARRAY);
    CheckGL();
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    CheckGL();
    glDisableClientState(GL_COLOR_ARRAY);
    CheckGL();
    glColor3fv(st.colour);
    CheckGL();
    glDrawElements(GL_TRIANGLES, cmd.idxCount, GL_UNSIGNED_INT, obj.indices.data() + cmd.idxOffset);
}

void DrawLines(const XObj8& obj, const XObjCmd8& cmd, ObjDrawFuncs_t* f, void* ref, DrawState& st) {
    if (st.setup != kSetupLine) {
        f->SetupLine(ref);
        CheckGL();
        st.setup = kSetupLine;
    }
    BindColouredPool(obj.geoLines, kArraysLines, st);
    EnableColouredClientStates();
    glDrawElements(GL_LINES, cmd.idxCount, GL_UNSIGNED_INT, obj.indices.data() + cmd.idxOffset);
}

void DrawLights(const XObj8& obj, const XObjCmd8& cmd, ObjDrawFuncs_t* f, void* ref, DrawState& st) {
    if (st.setup != kSetupLight) {
        f->SetupLight(ref);
        CheckGL();
        st.setup = kSetupLight;
    }
    BindColouredPool(obj.geoLights, kArraysLights, st);
    EnableColouredClientStates();
    // Lights come straight from their pool, not through the index list.
    glDrawArrays(GL_POINTS, cmd.idxOffset, cmd.idxCount);
}

void Animate(const XObj8& obj, const XObjCmd8& cmd, ObjDrawFuncs_t* f, void* ref) {
    const XObjAnim8& anim = obj.animations[cmd.idxOffset];
    const XObjAnimKey8& k0 = anim.key[0];
    const XObjAnimKey8& k1 = anim.key[1];
    const float v = f->GetAnimParam(anim.dataref.c_str(), k0.value, k1.value, ref);
    if (cmd.id == anim_Rotate) {
        const float angle = Interpolate(k0.angle, k1.angle, v, k0.value, k1.value);
        glRotatef(angle, k0.xyz[0], k0.xyz[1], k0.xyz[2]);
    } else {
        glTranslatef(Interpolate(k0.xyz[0], k1.xyz[0], v, k0.value, k1.value),
                     Interpolate(k0.xyz[1], k1.xyz[1], v, k0.value, k1.value),
                     Interpolate(k0.xyz[2], k1.xyz[2], v, k0.value, k1.value));
    }
}

void ResetMaterial(DrawState& st) {
    static const GLfloat kAmbient[4] = {0.2f, 0.2f, 0.2f, 1.0f};
    static const GLfloat kDiffuse[4] = {0.8f, 0.8f, 0.8f, 1.0f};
    static const GLfloat kBlack[4] = {0.0f, 0.0f, 0.0f, 1.0f};
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, kAmbient);
    glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, kDiffuse);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, kBlack);
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, kBlack);
    glColor3f(1.0f, 1.0f, 1.0f);
    st.colour[0] = st.colour[1] = st.colour[2] = 1.0f;
    glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, 0);
}

} // namespace

void Default_SetupPoly(void*) {
    glEnable(GL_TEXTURE_2D);
}
void Default_SetupLine(void*) {
    glDisable(GL_TEXTURE_2D);
}
void Default_SetupLight(void*) {
    glDisable(GL_TEXTURE_2D);
}
void Default_SetupMovie(void*) {
    glEnable(GL_TEXTURE_2D);
}
void Default_SetupPanel(void*) {
    glEnable(GL_TEXTURE_2D);
}
void Default_TexCoord(const float* st, void*) {
    glTexCoord2fv(st);
}
void Default_TexCoordPointer(int size, unsigned long type, long stride, const void* pointer, void*) {
    glTexCoordPointer(size, static_cast<GLenum>(type), static_cast<GLsizei>(stride), pointer);
}

float Default_GetAnimParam(const char* dataref, float, float, void*) {
    if (myDataRef == nullptr) {
        myDataRef = XPLMFindDataRef(dataref);
        return 0.0f;
    }
    return XPLMGetDataf(myDataRef);
}

void ForgetDefaultAnimParam() {
    myDataRef = nullptr;
}

void ObjDraw8(const XObj8& obj, float dist, ObjDrawFuncs_t* funcs, void* ref) {
    if (obj.lods.empty()) return; // nothing to choose from
    ObjDrawFuncs_t* f = funcs ? funcs : const_cast<ObjDrawFuncs_t*>(&sDefault);

    // The last level whose range holds the distance wins; with none, the last level.
    const XObjLOD8* lod = &obj.lods.back();
    for (const XObjLOD8& l : obj.lods)
        if (l.lodNear <= dist && dist <= l.lodFar) lod = &l;

    DrawState st;
    for (const XObjCmd8& cmd : lod->cmds) {
        switch (cmd.id) {
        case attr_Shade_Flat:
            glShadeModel(GL_FLAT);
            CheckGL();
            break;
        case attr_Shade_Smooth:
            glShadeModel(GL_SMOOTH);
            CheckGL();
            break;
        case attr_Diffuse_RGB:
            st.colour[0] = cmd.params[0];
            st.colour[1] = cmd.params[1];
            st.colour[2] = cmd.params[2];
            glColor3fv(st.colour);
            CheckGL();
            break;
        case attr_Emission_RGB:
            glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, cmd.params);
            CheckGL();
            break;
        case attr_Shiny_Rat: {
            const GLfloat s[4] = {cmd.params[0], cmd.params[0], cmd.params[0], 1.0f};
            glLightfv(GL_LIGHT0, GL_SPECULAR, s);
            glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, s);
            glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, kShininessExponent);
            break;
        }
        case attr_No_Depth:
            glDisable(GL_DEPTH_TEST);
            CheckGL();
            break;
        case attr_Depth:
            glEnable(GL_DEPTH_TEST);
            CheckGL();
            break;
        case attr_Reset:
            ResetMaterial(st);
            CheckGL();
            break;
        case attr_Cull:
            glEnable(GL_CULL_FACE);
            CheckGL();
            break;
        case attr_NoCull:
            glDisable(GL_CULL_FACE);
            CheckGL();
            break;
        case attr_Offset:
            if (cmd.params[0] != 0.0f) {
                glEnable(GL_POLYGON_OFFSET_FILL);
                glPolygonOffset(kPolyOffsetFactorPerUnit * cmd.params[0], kPolyOffsetUnits);
                glDepthMask(GL_FALSE);
            } else {
                glDisable(GL_POLYGON_OFFSET_FILL);
                glPolygonOffset(0.0f, 0.0f);
                glDepthMask(GL_TRUE);
            }
            CheckGL();
            break;
        case obj8_Tris:
            DrawTris(obj, cmd, f, ref, st);
            CheckGL();
            break;
        case obj8_Lines:
            DrawLines(obj, cmd, f, ref, st);
            CheckGL();
            break;
        case obj8_Lights:
            DrawLights(obj, cmd, f, ref, st);
            CheckGL();
            break;
        case attr_No_Cockpit:
            st.cockpit = false;
            st.setup = kSetupNone; // the next geometry calls its set-up again
            break;
        case attr_Cockpit:
            st.cockpit = true;
            break;
        case attr_No_Blend:
            glDisable(GL_BLEND);
            CheckGL();
            break;
        case attr_Blend:
            glEnable(GL_BLEND);
            CheckGL();
            break;
        case anim_Begin:
            glPushMatrix();
            CheckGL();
            break;
        case anim_End:
            glPopMatrix();
            CheckGL();
            break;
        case anim_Rotate:
        case anim_Translate:
            Animate(obj, cmd, f, ref);
            break;
        default:
            break; // ambient, specular, LOD, smoke, hard surfaces: nothing to draw
        }
    }
}
