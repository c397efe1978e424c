// The world under the plug-ins' drawing: a concrete apron around the stand
// the aircraft started on, with painted lines that make motion and heading
// readable, and a low-poly stand-in for the user aircraft made from its
// profile (fuselage, wings, tail, engines, gear legs and wheels).
//
// The apron, seen from above with the stand's heading up (r: metres to the
// right of the lead-in line, a: metres ahead of the stand's reference point):
//
//                      |  lead-in line (yellow)
//        safety :      |      : safety line (white), clear of the wing tips
//               :   ===+===   :   stop bar (yellow) under the parked front gear
//               :      |      :
//               :      |      :
//      ----------------+----------------  taxilane (yellow), behind the parked tail
//
// Concrete slabs of slightly different greys cover a square around the stand;
// beyond it a plain field reaches a few kilometres and ends.
//
// The aircraft is placed as X-Plane places it: at local_x/y/z, turned by the
// heading clockwise about +y, then pitched, then rolled (the order the plug-in
// uses for its gear positions and simhost for object instances). Body frame:
// metres, x right, y up, z aft of the reference point, as the gear positions in
// the profile.
//
// Everything is drawn in immediate mode every frame: a few hundred lit quads.
#include "graphics/WorldDrawing.h"

#include "HostInternal.h"
#include "WorldMath.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace simhost::detail {

namespace {

struct Rgb {
    float r, g, b;
};

/// A point in the aircraft's body frame, metres.
struct Vec {
    double x, y, z;
};

// ------------------------------------------------------------------ apron
constexpr double kSlabM = 20;           ///< edge of a concrete slab, metres
constexpr int kSlabsEachSide = 10;      ///< slabs from the stand to the apron's edge (200 m)
constexpr double kFieldHalfM = 5000;    ///< the ground ends this far from the stand, metres
constexpr double kLineWidthM = 0.3;     ///< painted lines, metres (twice real: readable from 40 m)
constexpr double kStopBarDepthM = 0.6;  ///< metres along the lead-in line
constexpr double kStopBarHalfM = 3;     ///< half its width, metres
constexpr double kLeadInAheadM = 40;    ///< lead-in line beyond the parked nose, metres
constexpr double kTaxilaneGapM = 20;    ///< taxilane behind the parked tail, metres
constexpr double kSafetyClearanceM = 5; ///< safety lines outside the wing tips, metres
constexpr double kPaintLiftM = 0.02;    ///< paint above the concrete, metres (with a polygon offset)
constexpr float kPaintOffsetFactor = -1, kPaintOffsetUnits = -4; ///< glPolygonOffset for paint

// Lit by the sun from above the concrete shows about 1.4 times these values (diffuse plus ambient).
constexpr Rgb kConcrete[3] = {{0.42f, 0.42f, 0.41f}, {0.45f, 0.45f, 0.44f}, {0.39f, 0.39f, 0.38f}};
constexpr Rgb kField = {0.33f, 0.38f, 0.27f}; ///< worn grass beyond the apron
constexpr Rgb kYellow = {0.72f, 0.56f, 0.05f};
constexpr Rgb kWhite = {0.55f, 0.55f, 0.55f};

// ------------------------------------------------------------------ aircraft stand-in
// Proportions of a generic airliner, from the profile's length (2 * size_z) and span (2 * size_x).
constexpr double kFuselageRadiusPerLength = 0.055;
constexpr double kMinFuselageRadiusM = 0.5;
constexpr double kMinHalfSpanM = 0.5;         ///< a profile without a span still gets visible wings
constexpr double kMinTyreRadiusM = 0.05;      ///< nor a wheel of nothing
constexpr double kNoseAheadOfNoseGear = 0.12; ///< of the length: nose gear behind the nose
constexpr double kTailAftOfTailWheel = 0.05;  ///< of the length: tail wheel ahead of the tail's end
constexpr double kRootChordPerSpan = 0.17;
constexpr double kTipChordPerRoot = 0.3;
constexpr double kWingSweepPerHalfSpan = 0.25; ///< tip leading edge aft of the root's
constexpr double kDihedralPerHalfSpan = 0.05;  ///< tip above the root
constexpr double kWingThicknessPerChord = 0.1;
constexpr double kWingBelowAxis = 0.6;         ///< of the fuselage radius: a low wing
constexpr double kMainsAheadOfTrailing = 0.15; ///< of the root chord (tricycle)
constexpr double kMainsBehindLeading = 0.25;   ///< of the root chord (tail-dragger)
constexpr double kStabiliserHalfSpan = 0.33;   ///< of the half span
constexpr double kStabiliserChordPerRoot = 0.55;
constexpr double kStabiliserSweepPerHalfSpan = 0.375; ///< tip leading edge aft of the root's
constexpr double kFinHeightPerLength = 0.16;          ///< above the fuselage's top
constexpr double kFinChordPerLength = 0.13;
constexpr double kTailTipChordPerRoot = 0.5; ///< stabiliser and fin
constexpr double kFinSweepPerHeight = 0.3;   ///< fin tip leading edge aft of its root's, per metre up
constexpr double kTailSurfacesAhead = 0.03;  ///< of the length: trailing edges ahead of the tail's end
constexpr int kMaxEngines = 8;               ///< as many as the aircraft keeps state for
constexpr double kNacelleRadiusPerSpan = 0.028;
constexpr double kNacelleLengthPerLength = 0.11;
constexpr double kEngineSpanUse = 0.9;        ///< engines spread over this part of the half span
constexpr double kNacelleDrop = 1.2;          ///< nacelle axis below the wing, in nacelle radii
constexpr double kNacelleClearance = 1.3;     ///< lowest nacelle axis above the apron, in nacelle radii
constexpr double kNacelleLead = 0.2;          ///< nacelle centre ahead of the leading edge, in half lengths
constexpr double kStabiliserAboveAxis = 0.45; ///< of the fuselage radius, on the raised tail cone
constexpr double kFinRootAboveAxis = 0.3;     ///< of the fuselage radius: the fin's root is inside the body
constexpr double kLegThicknessPerTyre = 0.35;
constexpr double kMinLegThicknessM = 0.1;
constexpr double kLegIntoBody = 0.6; ///< of the fuselage radius: legs reach into wing or body
constexpr double kTyreWidthPerRadius = 0.65;
constexpr double kTwinWheelMinRadiusM = 0.3; ///< airliner tyres come in pairs
constexpr int kFuselageSides = 8;
constexpr int kWheelSides = 12;
constexpr int kNacelleSides = 8;

constexpr Rgb kFuselageWhite = {0.80f, 0.80f, 0.82f};
constexpr Rgb kWingGrey = {0.45f, 0.46f, 0.48f};
constexpr Rgb kFinBlue = {0.13f, 0.26f, 0.55f};
constexpr Rgb kGearGrey = {0.50f, 0.50f, 0.50f};
constexpr Rgb kTyreBlack = {0.12f, 0.12f, 0.12f};

/// Fuselage stations from nose to tail: fraction of the length, radius and centre-line lift as
/// fractions of the fuselage radius (the tail cone rises toward the fin).
constexpr struct {
    double along, radius, lift;
} kStations[] = {{0.00, 0.00, -0.20}, {0.03, 0.55, -0.12}, {0.10, 0.92, -0.03}, {0.17, 1.00, 0.00},
                 {0.62, 1.00, 0.00},  {0.85, 0.60, 0.35},  {0.98, 0.25, 0.70},  {1.00, 0.00, 0.75}};

void colour(const Rgb& c) {
    glColor3f(c.r, c.g, c.b);
}

/// The value of one of X-Plane's own scalar datarefs; 0 when the host has none.
double value(const HostCore& c, const char* name) {
    auto it = c.datarefByName.find(name);
    if (it == c.datarefByName.end() || it->second->values.empty()) return 0;
    const double v = it->second->values[0];
    return std::isfinite(v) ? v : 0;
}

// ------------------------------------------------------------------ apron drawing
/// The stand: where the aircraft started, in today's local frame, and its heading.
struct Stand {
    double x = 0, z = 0; ///< local metres
    double groundY = 0;  ///< apron height, local metres
    double sinH = 0, cosH = 1;

    /// Local x/z of a point r metres right of and a metres ahead of the stand.
    void at(double r, double a, double& x, double& z) const {
        x = this->x + r * cosH + a * sinH;
        z = this->z + r * sinH - a * cosH;
    }
    /// Emits a ground vertex at stand coordinates, lifted by `lift` metres.
    void vertex(double r, double a, double lift = 0) const {
        double vx = 0, vz = 0;
        at(r, a, vx, vz);
        glVertex3d(vx, groundY + lift, vz);
    }
    /// A flat rectangle [r0, r1] x [a0, a1] on the ground.
    void rect(double r0, double a0, double r1, double a1, double lift = 0) const {
        vertex(r0, a0, lift);
        vertex(r1, a0, lift);
        vertex(r1, a1, lift);
        vertex(r0, a1, lift);
    }
};

Stand standOf(const HostCore& c) {
    Stand s;
    // The aircraft started at the origin of the first local frame; follow that spot if the
    // origin has moved since.
    double y = 0;
    worldToLocal(refLat(c), refLon(c), static_cast<float>(c.opt.startLatDeg),
                 static_cast<float>(c.opt.startLonDeg), 0, s.x, y, s.z);
    s.groundY = c.world.groundY;
    const double h = c.opt.startHeadingDeg * kDegToRad;
    s.sinH = std::sin(h);
    s.cosH = std::cos(h);
    return s;
}

/// Lengths of the parked aircraft along the stand, metres ahead of its reference point.
struct Footprint {
    double noseAhead = 0;  ///< the nose
    double tailBehind = 0; ///< the tail's end, metres behind
    double frontGearAhead = 0;
    double halfSpan = 0;
};

/// A deterministic pick among the concrete greys, so the slabs do not form a plain checkerboard.
const Rgb& slabGrey(int i, int j) {
    const unsigned h = static_cast<unsigned>(i * 73856093) ^ static_cast<unsigned>(j * 19349663);
    return kConcrete[(h >> 4) % 3];
}

void drawApron(const Stand& s, const Footprint& f) {
    glNormal3f(0, 1, 0);
    glBegin(GL_QUADS);
    for (int i = -kSlabsEachSide; i < kSlabsEachSide; ++i)
        for (int j = -kSlabsEachSide; j < kSlabsEachSide; ++j) {
            colour(slabGrey(i, j));
            s.rect(i * kSlabM, j * kSlabM, (i + 1) * kSlabM, (j + 1) * kSlabM);
        }
    // The field: a frame of four quads around the apron.
    const double apron = kSlabsEachSide * kSlabM;
    colour(kField);
    s.rect(-kFieldHalfM, apron, kFieldHalfM, kFieldHalfM);
    s.rect(-kFieldHalfM, -kFieldHalfM, kFieldHalfM, -apron);
    s.rect(-kFieldHalfM, -apron, -apron, apron);
    s.rect(apron, -apron, kFieldHalfM, apron);
    glEnd();

    // Paint: slightly above the concrete and pulled toward the eye, so it never fights it for depth.
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(kPaintOffsetFactor, kPaintOffsetUnits);
    const double w = kLineWidthM / 2;
    const double taxilane = -(f.tailBehind + kTaxilaneGapM);
    const double safety = f.halfSpan + kSafetyClearanceM;
    glBegin(GL_QUADS);
    colour(kYellow);
    s.rect(-w, taxilane, w, f.noseAhead + kLeadInAheadM, kPaintLiftM);
    s.rect(-apron, taxilane - w, apron, taxilane + w, kPaintLiftM);
    s.rect(-kStopBarHalfM, f.frontGearAhead - kStopBarDepthM / 2, kStopBarHalfM,
           f.frontGearAhead + kStopBarDepthM / 2, kPaintLiftM);
    colour(kWhite);
    for (double side : {-1.0, 1.0})
        s.rect(side * safety - w, taxilane + kTaxilaneGapM / 2, side * safety + w,
               f.noseAhead + kSafetyClearanceM, kPaintLiftM);
    glEnd();
    glDisable(GL_POLYGON_OFFSET_FILL);
}

// ------------------------------------------------------------------ aircraft drawing
/// The stand-in's dimensions in the body frame, metres, from the profile.
struct Shape {
    double length = 0, radius = 0;
    double noseZ = 0, tailZ = 0; ///< ends of the fuselage (z aft)
    double axisY = 0;            ///< fuselage centre line
    double halfSpan = 0;
    double rootChord = 0, rootLeadingZ = 0, wingY = 0;
    double groundY = 0; ///< the apron under the main gear of the level aircraft
};

Shape shapeOf(const simhost::Aircraft& a) {
    Shape s;
    s.length = std::max(2 * a.sizeZ, 1.0);
    s.halfSpan = std::max(a.sizeX, kMinHalfSpanM);
    s.radius = std::max(kFuselageRadiusPerLength * s.length, kMinFuselageRadiusM);
    const simhost::Aircraft::Gear none{};
    const simhost::Aircraft::Gear& first = a.gear.empty() ? none : a.gear[0];
    if (a.tailDragger) {
        s.tailZ = first.z + kTailAftOfTailWheel * s.length;
        s.noseZ = s.tailZ - s.length;
    } else {
        s.noseZ = first.z - kNoseAheadOfNoseGear * s.length;
        s.tailZ = s.noseZ + s.length;
    }
    // The fuselage rests on the nose leg (on the main legs for a tail-dragger).
    const simhost::Aircraft::Gear& carrier = a.tailDragger && a.gear.size() > 1 ? a.gear[1] : first;
    s.axisY = carrier.y + s.radius;
    double mainsZ = 0;
    for (size_t i = 1; i < a.gear.size(); ++i)
        mainsZ += a.gear[i].z / static_cast<double>(a.gear.size() - 1);
    s.rootChord = kRootChordPerSpan * 2 * s.halfSpan;
    s.rootLeadingZ = a.tailDragger ? mainsZ - kMainsBehindLeading * s.rootChord
                                   : mainsZ + kMainsAheadOfTrailing * s.rootChord - s.rootChord;
    s.wingY = s.axisY - kWingBelowAxis * s.radius;
    if (a.gear.size() > 1) s.groundY = a.gear[1].y - a.gear[1].legLength - a.gear[1].tyreRadius;
    return s;
}

void normal(const Vec& n) {
    glNormal3d(n.x, n.y, n.z);
}

void vertex(const Vec& v) {
    glVertex3d(v.x, v.y, v.z);
}

Vec sub(const Vec& a, const Vec& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Vec cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const Vec& a, const Vec& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Quads (inside glBegin(GL_QUADS)) of a convex hexahedron: c[0..3] one end's ring, c[4..7] the other end's
/// in the same order. Faces get flat normals pointing away from the centre.
void hexahedron(const Vec (&c)[8]) {
    static constexpr int kFaces[6][4] = {{0, 1, 2, 3}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                         {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
    Vec centre{0, 0, 0};
    for (const Vec& v : c)
        centre = {centre.x + v.x / 8, centre.y + v.y / 8, centre.z + v.z / 8};
    for (const auto& f : kFaces) {
        Vec n = cross(sub(c[f[2]], c[f[0]]), sub(c[f[3]], c[f[1]]));
        if (dot(n, sub(c[f[0]], centre)) < 0) n = {-n.x, -n.y, -n.z};
        normal(n);
        for (int k : f)
            vertex(c[k]);
    }
}

/// An axis-aligned box around a centre, half extents in metres.
void box(const Vec& m, double hx, double hy, double hz) {
    const Vec c[8] = {{m.x - hx, m.y - hy, m.z - hz}, {m.x + hx, m.y - hy, m.z - hz},
                      {m.x + hx, m.y + hy, m.z - hz}, {m.x - hx, m.y + hy, m.z - hz},
                      {m.x - hx, m.y - hy, m.z + hz}, {m.x + hx, m.y - hy, m.z + hz},
                      {m.x + hx, m.y + hy, m.z + hz}, {m.x - hx, m.y + hy, m.z + hz}};
    hexahedron(c);
}

/// A flying surface from a root section to a tip section, each given by its leading edge, chord
/// and thickness (metres), chords along z.
void surface(const Vec& rootLeading, double rootChord, double rootThick, const Vec& tipLeading,
             double tipChord, double tipThick, bool vertical) {
    auto ring = [&](const Vec& le, double chord, double thick, Vec* out) {
        const double t = thick / 2;
        // Thickness across the surface: along y for a wing, along x for a fin.
        const Vec d = vertical ? Vec{t, 0, 0} : Vec{0, t, 0};
        out[0] = {le.x - d.x, le.y - d.y, le.z};
        out[1] = {le.x - d.x, le.y - d.y, le.z + chord};
        out[2] = {le.x + d.x, le.y + d.y, le.z + chord};
        out[3] = {le.x + d.x, le.y + d.y, le.z};
    };
    Vec c[8];
    ring(rootLeading, rootChord, rootThick, c);
    ring(tipLeading, tipChord, tipThick, c + 4);
    hexahedron(c);
}

/// Quads (inside glBegin(GL_QUADS)) of a closed cylinder of `sides` faces around an axis along x (axis 0) or
/// z (axis 2).
void cylinder(const Vec& centre, int axis, double radius, double halfLength, int sides) {
    auto point = [&](double along, double angle) {
        const double u = radius * std::cos(angle), v = radius * std::sin(angle);
        return axis == 0 ? Vec{centre.x + along, centre.y + v, centre.z + u}
                         : Vec{centre.x + u, centre.y + v, centre.z + along};
    };
    auto radial = [&](double angle) {
        return axis == 0 ? Vec{0, std::sin(angle), std::cos(angle)}
                         : Vec{std::cos(angle), std::sin(angle), 0};
    };
    const double step = 2 * kPi / sides;
    for (int k = 0; k < sides; ++k) {
        const double a0 = k * step, a1 = (k + 1) * step;
        normal(radial(a0));
        vertex(point(-halfLength, a0));
        vertex(point(halfLength, a0));
        normal(radial(a1));
        vertex(point(halfLength, a1));
        vertex(point(-halfLength, a1));
    }
    // The ends: triangles from the axis, each a quad with its last corner repeated.
    for (double end : {-1.0, 1.0}) {
        const Vec hub = axis == 0 ? Vec{centre.x + end * halfLength, centre.y, centre.z}
                                  : Vec{centre.x, centre.y, centre.z + end * halfLength};
        normal(axis == 0 ? Vec{end, 0, 0} : Vec{0, 0, end});
        for (int k = 0; k < sides; ++k) {
            vertex(hub);
            vertex(point(end * halfLength, k * step));
            vertex(point(end * halfLength, (k + 1) * step));
            vertex(point(end * halfLength, (k + 1) * step));
        }
    }
}

void drawFuselage(const Shape& s) {
    const double step = 2 * kPi / kFuselageSides;
    auto point = [&](size_t i, int k) {
        const double r = kStations[i].radius * s.radius, a = k * step;
        return Vec{r * std::cos(a), s.axisY + kStations[i].lift * s.radius + r * std::sin(a),
                   s.noseZ + kStations[i].along * s.length};
    };
    colour(kFuselageWhite);
    for (size_t i = 0; i + 1 < std::size(kStations); ++i)
        for (int k = 0; k < kFuselageSides; ++k) {
            // Smooth shading: each vertex gets the radial direction of its side.
            const Vec n0{std::cos(k * step), std::sin(k * step), 0};
            const Vec n1{std::cos((k + 1) * step), std::sin((k + 1) * step), 0};
            normal(n0);
            vertex(point(i, k));
            vertex(point(i + 1, k));
            normal(n1);
            vertex(point(i + 1, k + 1));
            vertex(point(i, k + 1));
        }
}

void drawWingsAndTail(const simhost::Aircraft& a, const Shape& s) {
    const double tipChord = kTipChordPerRoot * s.rootChord;
    const double rootThick = kWingThicknessPerChord * s.rootChord;
    const double tipThick = kWingThicknessPerChord * tipChord;
    colour(kWingGrey);
    for (double side : {-1.0, 1.0}) {
        const Vec root{0, s.wingY, s.rootLeadingZ};
        const Vec tip{side * s.halfSpan, s.wingY + kDihedralPerHalfSpan * s.halfSpan,
                      s.rootLeadingZ + kWingSweepPerHalfSpan * s.halfSpan};
        surface(root, s.rootChord, rootThick, tip, tipChord, tipThick, false);
    }
    // Engines under the wings, half on each side; a single engine sits in the nose.
    const int perSide = std::clamp(a.engineCount, 0, kMaxEngines) / 2;
    const double nacelleRadius = kNacelleRadiusPerSpan * 2 * s.halfSpan;
    const double nacelleHalf = kNacelleLengthPerLength * s.length / 2;
    for (int e = 0; e < perSide; ++e) {
        // Spread evenly over the inner 90 % of the half span (0.45 and 0.3/0.6 of it).
        const double along = (e + 1.0) / (perSide + 1.0) * kEngineSpanUse;
        for (double side : {-1.0, 1.0}) {
            const double x = side * along * s.halfSpan;
            const double leading = s.rootLeadingZ + kWingSweepPerHalfSpan * along * s.halfSpan;
            const double hung =
                s.wingY + kDihedralPerHalfSpan * along * s.halfSpan - kNacelleDrop * nacelleRadius;
            const Vec centre{x, std::max(hung, s.groundY + kNacelleClearance * nacelleRadius),
                             leading - kNacelleLead * nacelleHalf};
            cylinder(centre, 2, nacelleRadius, nacelleHalf, kNacelleSides);
        }
    }

    const double tailTrailing = s.tailZ - kTailSurfacesAhead * s.length;
    const double stabChord = kStabiliserChordPerRoot * s.rootChord;
    const double stabHalf = kStabiliserHalfSpan * s.halfSpan;
    const double stabY = s.axisY + kStabiliserAboveAxis * s.radius;
    for (double side : {-1.0, 1.0}) {
        const Vec root{0, stabY, tailTrailing - stabChord};
        const Vec tip{side * stabHalf, stabY + kDihedralPerHalfSpan * stabHalf,
                      tailTrailing - stabChord + kStabiliserSweepPerHalfSpan * stabHalf};
        surface(root, stabChord, kWingThicknessPerChord * stabChord, tip, kTailTipChordPerRoot * stabChord,
                kWingThicknessPerChord * kTailTipChordPerRoot * stabChord, false);
    }
    colour(kFinBlue);
    const double finChord = kFinChordPerLength * s.length;
    const double finHeight = kFinHeightPerLength * s.length;
    const Vec finRoot{0, s.axisY + kFinRootAboveAxis * s.radius, tailTrailing - finChord};
    const Vec finTip{0, s.axisY + s.radius + finHeight,
                     tailTrailing - kTailTipChordPerRoot * finChord + kFinSweepPerHeight * finHeight};
    surface(finRoot, finChord, kWingThicknessPerChord * finChord, finTip, kTailTipChordPerRoot * finChord,
            kWingThicknessPerChord * kTailTipChordPerRoot * finChord, true);
}

void drawGear(const simhost::Aircraft& a, const Shape& s) {
    for (const simhost::Aircraft::Gear& g : a.gear) {
        const double tyre = std::max(g.tyreRadius, kMinTyreRadiusM);
        const double legHalf = std::max(kLegThicknessPerTyre * tyre, kMinLegThicknessM) / 2;
        const double top = g.y + kLegIntoBody * s.radius, wheelY = g.y - g.legLength;
        colour(kGearGrey);
        box({g.x, (top + wheelY) / 2, g.z}, legHalf, (top - wheelY) / 2, legHalf);
        colour(kTyreBlack);
        const double width = kTyreWidthPerRadius * tyre;
        if (tyre >= kTwinWheelMinRadiusM) {
            const double offset = legHalf + width / 2;
            cylinder({g.x - offset, wheelY, g.z}, 0, tyre, width / 2, kWheelSides);
            cylinder({g.x + offset, wheelY, g.z}, 0, tyre, width / 2, kWheelSides);
        } else {
            cylinder({g.x, wheelY, g.z}, 0, tyre, width / 2, kWheelSides);
        }
    }
}

/// True when every size and gear value of the profile is a number (the control API can set any).
bool drawable(const simhost::Aircraft& a) {
    bool ok = std::isfinite(a.sizeX) && std::isfinite(a.sizeZ);
    for (const simhost::Aircraft::Gear& g : a.gear)
        for (double v : {g.x, g.y, g.z, g.legLength, g.tyreRadius})
            ok = ok && std::isfinite(v);
    return ok;
}

void drawAircraft(const HostCore& c, const Shape& s) {
    const char* thetaName = "sim/flightmodel/position/theta";
    auto theta = c.datarefByName.find(thetaName);
    if (theta != c.datarefByName.end() && theta->second->removed) thetaName = "sim/flightmodel/position/the";
    glPushMatrix();
    glTranslated(value(c, "sim/flightmodel/position/local_x"), value(c, "sim/flightmodel/position/local_y"),
                 value(c, "sim/flightmodel/position/local_z"));
    glRotated(-value(c, "sim/flightmodel/position/psi"), 0, 1, 0);
    glRotated(value(c, thetaName), 1, 0, 0);
    glRotated(-value(c, "sim/flightmodel/position/phi"), 0, 0, 1);
    glBegin(GL_QUADS); // one batch: a draw call costs more than the few hundred quads in it
    drawFuselage(s);
    drawWingsAndTail(c.aircraft, s);
    drawGear(c.aircraft, s);
    glEnd();
    glPopMatrix();
}

} // namespace

void drawWorld(const HostCore& c) {
    // A profile with non-numbers gets the apron, painted for an aircraft of no size, and no aircraft.
    const bool aircraft = drawable(c.aircraft);
    const Shape shape = aircraft ? shapeOf(c.aircraft) : Shape{};
    Footprint f;
    f.noseAhead = -shape.noseZ;
    f.tailBehind = shape.tailZ;
    f.halfSpan = shape.halfSpan;
    if (aircraft && !c.aircraft.gear.empty()) {
        double front = c.aircraft.gear[0].z;
        for (const simhost::Aircraft::Gear& g : c.aircraft.gear)
            front = std::min(front, g.z);
        f.frontGearAhead = -front;
    }

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glEnable(GL_LIGHTING); // the sun of the 3-D phases, set up with the view
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_TRUE);
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    glShadeModel(GL_SMOOTH);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_FOG);
    drawApron(standOf(c), f);
    if (aircraft) drawAircraft(c, shape);
    glPopAttrib();
}

} // namespace simhost::detail
