#include "core/ToolsMenu.h"

#include "XPLMMenus.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/PluginState.h"
#include "toolkit/FileDialog.h"
#include "toolkit/MeasureWindow.h"
#include "toolkit/TextureCutter.h"
#include "truck/FreeMove.h"
#include "utils/FileUtils.h"

#include <cstdint>

namespace {

enum ToolItem { kToolFreeMove = 0, kToolTextureCutter = 1, kToolMeasure = 2 };

XPLMMenuID gToolsMenu = nullptr;

void* RefOf(int reference) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(reference));
}

void OnTextureChosen(const char* path, void* /*refcon*/) {
    if (path) OpenTextureCutter(path);
}

} // namespace

void BuildToolsMenu() {
    const int anchor = XPLMAppendMenuItem(KLVsubMenu, "Tools", RefOf(kMenuTools), 0);
    gToolsMenu = XPLMCreateMenu("Tools", KLVsubMenu, anchor, ToolsMenuHandlerCallback, nullptr);
    XPLMAppendMenuItem(gToolsMenu, "Free move panel", RefOf(kToolFreeMove), 0);
    XPLMAppendMenuItem(gToolsMenu, "Texture cutter", RefOf(kToolTextureCutter), 0);
    XPLMAppendMenuItem(gToolsMenu, "Measuring window", RefOf(kToolMeasure), 0);
}

void ToolsMenuHandlerCallback(void* /*menuRef*/, void* itemRef) {
    GuardCallback("Tools menu", [itemRef] {
        switch (static_cast<int>(reinterpret_cast<intptr_t>(itemRef))) {
        case kToolFreeMove:
            OpenFreeMovePanel();
            break;
        case kToolTextureCutter:
            OpenFileDialog("Texture to cut", HV_FileUtils::GetPath(7), "*.png", OnTextureChosen, nullptr);
            break;
        case kToolMeasure:
            OpenMeasureWindow();
            break;
        default:
            break;
        }
    });
}
