// A picture file turned into one OpenGL texture through the simulator's texture
// functions, and drawn piece by piece in 2-D window coordinates (pixels, origin
// bottom left), optionally rotated, tinted by the cockpit lights at night, or
// faded when the simulator shows a transparent panel.
//
// Pictures with neither side a power of two are padded up to powers of two
// (picture in the top-left corner of the texture); `imageWidth`/`imageHeight`
// keep the picture's size and `width`/`height` the texture's. Piece
// coordinates are texture pixels with t = 0 at the texture's bottom row.
#pragma once

struct ImageInfo;

/// One picture as one OpenGL texture, drawn piece by piece.
class HV_Texture {
public:
    unsigned char* data = nullptr; ///< pixels while loading; null once the texture is built
    int bitsPerPixel = 0;          ///< 24 (RGB) or 32 (RGBA)
    unsigned int width = 0;        ///< texture width as uploaded (after padding), pixels
    unsigned int height = 0;       ///< texture height as uploaded (after padding), pixels
    unsigned int imageWidth = 0;   ///< picture width as loaded, pixels
    unsigned int imageHeight = 0;  ///< picture height as loaded, pixels
    int textureID = 0;             ///< texture name from the simulator; 0 = none
    bool asTexture = true;         ///< build the texture right after loading
    bool autoNight = false;        ///< tint pieces by the cockpit light level when asked
    float screenScale = 1.0f;      ///< screen width / 1024, taken at Init

    /// Calls Init(asTexture).
    explicit HV_Texture(bool asTexture = true);
    /// Frees pixel data that was never uploaded; the texture name is released by DeleteTexture.
    ~HV_Texture();
    HV_Texture(const HV_Texture&) = delete;
    HV_Texture& operator=(const HV_Texture&) = delete;

    /// Clears data, sizes and texture name, stores asTexture, clears autoNight, computes screenScale.
    void Init(bool asTexture);
    /// Whether the next load builds the texture right away.
    void SetAsTexture(bool asTexture);
    /// Whether pieces drawn with nightLit are tinted by the cockpit light level.
    void SetAutoNight(bool autoNight);

    /// Loads an uncompressed 24/32-bit TGA; false when the reader refuses it.
    bool LoadTGA(const char* path);
    /// Loads a PNG (its magenta colour key also becomes transparent); false when refused.
    bool LoadPNG(const char* path);
    /// Loads a 24-bit BMP; false when refused.
    bool LoadBMP(const char* path);
    /// Uploads `data` as the texture (padding it when neither side is a power of two), then frees it.
    void BuildTextureFromData();

    /// One textured quad at (x, y) of w x h pixels, texture coordinates normalised (0..1),
    /// turned by `angle` degrees counter-clockwise about the quad's centre.
    void DrawTexture(float s1, float t1, float s2, float t2, int x, int y, int w, int h, float angle);
    /// Draws the piece (px1, py1)-(px2, py2) (texture pixels) into the screen rectangle
    /// (x, y, w, h). `color` (3 floats) overrides the tint; else `nightLit` tints by the cockpit
    /// light level; `fadeWithPanel` draws at alpha 0.4 while the panel is shown transparent.
    void DrawTexturePeaceComplete(float px1, float py1, float px2, float py2, int x, int y, int w, int h,
                                  bool nightLit, bool fadeWithPanel, float angle, const float* color);
    /// Same as DrawTexturePeaceComplete at one screen pixel per texture pixel.
    void DrawTexturePeace(float px1, float py1, float px2, float py2, int x, int y, bool nightLit,
                          bool fadeWithPanel, float angle, const float* color);
    /// Same as DrawTexturePeaceComplete with an explicit alpha (0..1) instead of the panel
    /// fade; `color`, when given, is drawn with that alpha too.
    void DrawTexturePeaceTransparent(float px1, float py1, float px2, float py2, int x, int y, int w, int h,
                                     float alpha, bool nightLit, float angle, const float* color);
    /// Looks up the simulator values drawing reads (cockpit light levels, transparent
    /// panel). Call at plug-in start; otherwise the first draw looks them up once.
    static void FindDataRefs();
    /// Deletes one OpenGL texture name; forgets textureID when it is that name.
    void DeleteTexture(int textureName);

private:
    bool TakeBitmap(int status, ImageInfo* info);
    void ApplyTint(bool nightLit, float alpha, const float* color, bool colorKeepsAlpha);
    void DrawPiece(float px1, float py1, float px2, float py2, int x, int y, int w, int h, bool nightLit,
                   float alpha, const float* color, bool colorKeepsAlpha, float angle);
};
