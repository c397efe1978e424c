#include "core/About.h"

#include "core/CallbackGuard.h"
#include "core/PluginBitmaps.h"
#include "core/SimulatorDataRefs.h"
#include "toolkit/Colors.h"
#include "toolkit/Controls.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

About* gAbout = nullptr;

namespace {

constexpr int kWindowWidth = 376; // pixels
constexpr int kLogoWidth = 361;   // pixels
constexpr int kLogoHeight = 246;  // pixels
constexpr long kMsgClose = 1200;
constexpr int kNewHostVersion = 739; // hosts above draw their captions narrower: other dot runs
constexpr float kPanelBackAlpha = 0.9f;
constexpr float kPanelBorderAlpha = 0.5f;

HV_PanelStyle* CreditStyle() {
    return new HV_PanelStyle(HV_OGLUtils_ColorGray, kPanelBackAlpha, HV_OGLUtils_ColorWhite, 1.0f,
                             HV_OGLUtils_ColorGray, 1.0f, kPanelBorderAlpha);
}

// The same lines twice, dotted to line up under each host's caption font.
const char* const kCreditsNew[] = {
    "Concept and code ..................... Halvern",
    "Truck and ground power models ........ Halvern",
    "Crew voices ................ the host's speech",
};
const char* const kCreditsOld[] = {
    "Concept and code ....................... Halvern",
    "Truck and ground power models .......... Halvern",
    "Crew voices .................. the host's speech",
};
const char* const kThanks[] = {
    "every pilot who tried the push-back on the apron,",
    "and the ground crews who showed how it is done.",
};
constexpr const char* kVersionLine = "Kalvora, push-back and ground power v1.2.2b3";

HV_Panel* AddPanel(HV_Window* window, int margeX, int margeY) {
    HV_Panel* panel = new HV_Panel(CreditStyle(), false, 0, nullptr, true, true);
    panel->SetMarge(margeX, margeY);
    window->AddChild(panel);
    return panel;
}

} // namespace

About::~About() {
    FreePluginBitmap(logo);
}

void About::OpenAbout() {
    GuardCallback("About window", [] {
        if (gAbout) return;
        gAbout = new About();
        gAbout->MakeDialog();
    });
}

void About::MakeDialog() {
    window = new HV_Window(this, HV_WindowHandler, kWindowWidth, "About Kalvora...", true, true);

    logo = LoadPluginBitmap("KLVlogo.png");
    HV_Panel* picturePanel = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
    window->AddChild(picturePanel);
    picturePanel->AddChild(PictureOfBitmap(logo, kLogoWidth, kLogoHeight), 0);

    HV_Panel* credits = AddPanel(window, 5, 5);
    const bool newHost = XPVersion > kNewHostVersion;
    for (const char* line : newHost ? kCreditsNew : kCreditsOld)
        credits->AddChild(new HV_CtrlText(line, kAlignLeft, true), 0);

    HV_Panel* thanks = AddPanel(window, 5, 2);
    thanks->AddChild(new HV_CtrlText("Special thanks to:", kAlignLeft, true), 0);
    for (const char* line : kThanks)
        thanks->AddChild(new HV_CtrlText(line, kAlignLeft, true), 0);

    HV_Panel* version = AddPanel(window, 5, 5);
    HV_CtrlText* versionText = new HV_CtrlText(kVersionLine, kAlignLeft, true);
    versionText->SetMarge(5, 1);
    version->AddChild(versionText, 0);

    window->Pack();
    window->Center();
}

int About::HV_WindowHandler(void* dialog, long message, HV_Panel* /*control*/, long /*param1*/,
                            long /*param2*/) {
    if (message != kMsgClose) return 0;
    GuardCallback("About window close", [dialog] {
        auto* about = static_cast<About*>(dialog);
        if (gAbout == about) gAbout = nullptr;
        delete about; // the window itself is deleted by the toolkit on the answer 2
    });
    return kHV_CloseWindow;
}
