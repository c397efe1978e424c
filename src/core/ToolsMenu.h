// The "Tools" sub-menu of the Kalvora menu: the free-move panel and the two
// layout tools. Its item in the Kalvora menu carries a negative reference,
// which the Kalvora menu handler ignores; the sub-menu has its own handler.
#pragma once

/// Item reference of "Tools" in the Kalvora menu (negative: the Kalvora handler ignores it).
constexpr int kMenuTools = -1;

/// Appends "Tools" to the Kalvora menu and builds its sub-menu; call after "Trucks".
void BuildToolsMenu();
/// Handler of the "Tools" sub-menu; only itemRef is used.
void ToolsMenuHandlerCallback(void* menuRef, void* itemRef);
