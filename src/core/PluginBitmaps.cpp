#include "core/PluginBitmaps.h"

#include "XPLMUtilities.h"
#include "core/PluginState.h"
#include "images/Texture.h"
#include "toolkit/Controls.h"
#include "utils/FileUtils.h"

#include <string>

namespace {
constexpr char kPluginFolderKind = 7; // the plug-in file's path without its ending
} // namespace

HV_Texture* LoadPluginBitmap(const char* name) {
    auto* texture = new HV_Texture(true);
    const std::string path = std::string(HV_FileUtils::GetPath(kPluginFolderKind)) + "Bitmaps" +
                             XPLMGetDirectorySeparator() + name;
    if (!texture->LoadPNG(HV_FileUtils::TranslateXCodePath(path.c_str())))
        KLVLogWrite(("[WRNG] No picture at " + path + "\n").c_str());
    return texture;
}

HV_CtrlPicture* PictureOfBitmap(HV_Texture* texture, int width, int height) {
    // Texture rows count from the bottom; the picture fills the top rows.
    const int top = static_cast<int>(texture->height);
    return new HV_CtrlPicture(texture, 0, top - height, width, top, false, true);
}

void FreePluginBitmap(HV_Texture* texture) {
    if (!texture) return;
    if (texture->textureID) texture->DeleteTexture(texture->textureID);
    delete texture;
}
