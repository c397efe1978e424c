// Draws the object instances plug-ins placed, as X-Plane does in every era:
// each instance's OBJ8 model at its position and attitude (heading turns
// clockwise about +y, then pitch, then roll), lit by the scene's sun, its
// animations driven by the instance's own values for the datarefs it listed at
// creation and by the live dataref values for any other.
#include "graphics/InstanceDrawing.h"

#include "HostInternal.h"
#include "XPLMDataAccess.h"
#include "images/ImageFiles.h"
#include "objects/Obj8Reader.h"
#include "objects/ObjDraw8.h"

#include <GL/gl.h>
#include <GL/glext.h> // GL_BGR, GL_BGRA where gl.h stops at OpenGL 1.1 (Windows)

#include <cmath>
#include <map>
#include <string>

namespace simhost::detail {

namespace {

/// A model file read once per host, with its day texture uploaded.
struct Model {
    XObj8 obj;
    bool ok = false;
    GLuint texture = 0; ///< 0: drawn untextured (white)
};

struct Cache {
    const HostCore* host = nullptr; ///< textures belong to this host's context
    std::map<std::string, Model> models;
};
Cache gCache;

std::string folderOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

bool endsWith(const std::string& s, const char* tail) {
    const std::string t(tail);
    return s.size() >= t.size() && s.compare(s.size() - t.size(), t.size(), t) == 0;
}

/// Uploads a PNG or BMP texture (rows bottom first, as GL wants them); 0 when it cannot be read.
GLuint uploadTexture(const std::string& path) {
    ImageInfo image{};
    const bool png = endsWith(path, ".png") || endsWith(path, ".PNG");
    const int status =
        png ? CreateBitmapFromPNG(path.c_str(), &image) : CreateBitmapFromFile(path.c_str(), &image);
    if (status != 0 || !image.data) return 0;
    GLenum format = GL_RGB;
    if (png)
        format = image.channels == 4 ? GL_RGBA : GL_RGB;
    else
        format = image.channels == 4 ? GL_BGRA : GL_BGR; // BMP pixels are blue-green-red
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glPixelStorei(GL_UNPACK_ALIGNMENT, image.pad == 0 ? 1 : 4); // BMP rows are padded to 4 bytes
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, image.channels == 4 ? GL_RGBA : GL_RGB, static_cast<GLsizei>(image.width),
                 static_cast<GLsizei>(image.height), 0, format, GL_UNSIGNED_BYTE, image.data);
    DestroyBitmap(&image);
    return name;
}

Model& modelFor(const HostCore& c, const std::string& path) {
    if (gCache.host != &c) { // a new host has a new context: the old texture names mean nothing
        gCache.models.clear();
        gCache.host = &c;
    }
    auto found = gCache.models.find(path);
    if (found != gCache.models.end()) return found->second;
    Model& m = gCache.models[path];
    m.ok = XObj8Read(path.c_str(), m.obj);
    if (!m.ok) {
        writeLog("simhost: cannot draw object " + path + "\n");
        return m;
    }
    if (!m.obj.texture.empty()) m.texture = uploadTexture(folderOf(path) + m.obj.texture);
    return m;
}

/// Animation values: the instance's own for the names it listed, the live dataref otherwise.
float instanceAnimParam(const char* dataref, float /*value1*/, float /*value2*/, void* ref) {
    const auto* info = static_cast<const simhost::InstanceInfo*>(ref);
    if (!dataref) return 0.0f;
    for (size_t i = 0; i < info->datarefs.size() && i < info->data.size(); ++i)
        if (info->datarefs[i] == dataref) return info->data[i];
    XPLMDataRef live = XPLMFindDataRef(dataref);
    return live ? XPLMGetDataf(live) : 0.0f;
}

} // namespace

void drawInstances(HostCore& c) {
    ObjDrawFuncs_t funcs = {Default_SetupPoly,       Default_SetupLine,  Default_SetupLight,
                            Default_SetupMovie,      Default_SetupPanel, Default_TexCoord,
                            Default_TexCoordPointer, instanceAnimParam};
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glEnable(GL_LIGHTING); // X-Plane lights its objects with the sun
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.5f);
    for (InstanceRec& rec : c.instances) {
        if (!rec.alive || !rec.object || !rec.info.positioned) continue;
        Model& m = modelFor(c, rec.object->path);
        if (!m.ok) continue;
        const simhost::InstanceInfo& at = rec.info;
        const double dx = at.x - c.camera.pos[0], dy = at.y - c.camera.pos[1], dz = at.z - c.camera.pos[2];
        const float distance = static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
        glPushMatrix();
        glTranslated(at.x, at.y, at.z);
        glRotatef(-at.heading, 0.0f, 1.0f, 0.0f);
        glRotatef(at.pitch, 1.0f, 0.0f, 0.0f);
        glRotatef(-at.roll, 0.0f, 0.0f, 1.0f);
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        glBindTexture(GL_TEXTURE_2D, m.texture);
        ObjDraw8(m.obj, distance, &funcs, &rec.info);
        glPopMatrix();
    }
    glPopClientAttrib();
    glPopAttrib();
}

} // namespace simhost::detail
