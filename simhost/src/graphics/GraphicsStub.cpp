// Placeholder renderer until the EGL renderer lands: rendering is never available.
#include "graphics/GraphicsHooks.h"

namespace simhost::gfx {

void setEnabled(bool) {}
bool available() { return false; }
std::string unavailableReason() { return "rendering is not built into this simhost yet"; }
bool beginFrame(int, int) { return false; }
void setup3D(const View&) {}
void setup2D() {}
void endFrame() {}
bool writePng(const std::string&, std::string* why) {
    if (why) *why = unavailableReason();
    return false;
}

} // namespace simhost::gfx
