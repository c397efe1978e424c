// The push-back truck's scene object as the truck sequence drives it: shown or
// hidden, and placed and drawn from the draw callback. Positions are metres in
// the host's local frame, the heading is degrees true.
#pragma once

/// Marks the truck shown or hidden without drawing it.
void TruckObjectSetVisibility(bool visible);
/// True while the truck is marked shown.
bool TruckObjectIsVisible();
/// Hides the truck (it is drawn again only once it is marked shown).
void TruckObjectHide();
/// Places the model's origin at (x, y, z) turned to `heading`, marks it shown and draws it now.
/// Call from a 3-D draw callback only.
void TruckObjectDraw(float x, float y, float z, float heading);
/// Where the truck model was placed by the last draw (metres, degrees).
void TruckObjectPlacement(float* x, float* y, float* z, float* heading);
