// Pictures from the plug-in's "Bitmaps" folder, shown by its windows.
#pragma once

class HV_CtrlPicture;
class HV_Texture;

/// Loads "<plug-in folder>/Bitmaps/<name>" as a PNG texture; a missing or bad file gives an empty
/// texture and a "[WRNG]" log line. The caller owns the texture.
HV_Texture* LoadPluginBitmap(const char* name);
/// A picture control of width x height pixels over the picture in the texture's top-left corner.
HV_CtrlPicture* PictureOfBitmap(HV_Texture* texture, int width, int height);
/// Deletes the texture and its texture name.
void FreePluginBitmap(HV_Texture* texture);
