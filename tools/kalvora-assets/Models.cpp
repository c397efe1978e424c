#include "Models.h"

#include "Atlas.h"
#include "MeshBuilder.h"

namespace assets {

namespace {

constexpr int kWheelSegments = 16; ///< faces around a tyre

/// A wheel of radius r standing on the apron.
void GroundWheel(MeshBuilder& m, const AtlasSkin& s, float x, float z, float r, float width) {
    m.wheel({x, kGroundY + r, z}, r, width, kWheelSegments, s.tread, s.hub);
}

/// A tug's wheel of radius r on the apron that rolls with the tug and, when `steers`, steers.
void TugWheel(MeshBuilder& m, const AtlasSkin& s, float x, float z, float r, float width, bool steers) {
    static const WheelDrive kTugDrive{kSteeringDataref, kWheelRotationDataref};
    m.beginWheelPart({x, kGroundY + r, z}, steers, kTugDrive);
    m.wheel({0, 0, 0}, r, width, kWheelSegments, s.tread, s.hub);
    m.endPart();
}

} // namespace

XObj8 TowBarTug() {
    const AtlasSkin s = Skin();
    MeshBuilder m;
    const float g = kGroundY;
    // Tow bar: the head round the nose-gear axle at the origin, a V of two arms to the tug's hook.
    m.box({-0.25f, g + 0.30f, -0.15f}, {0.25f, g + 0.55f, 0.20f}, s.metal);
    m.beam({0.0f, g + 0.42f, -0.10f}, {0.0f, g + 0.42f, -0.60f}, 0.10f, s.hazard.side);
    m.beam({0.0f, g + 0.42f, -0.60f}, {0.35f, g + 0.45f, -2.60f}, 0.08f, s.hazard.side);
    m.beam({0.0f, g + 0.42f, -0.60f}, {-0.35f, g + 0.45f, -2.60f}, 0.08f, s.hazard.side);
    m.beam({0.35f, g + 0.45f, -2.60f}, {-0.35f, g + 0.45f, -2.60f}, 0.08f, s.metal.side);
    m.box({-0.12f, g + 0.25f, -1.30f}, {0.12f, g + 0.35f, -1.10f}, s.metal); // the bar's little wheel stand

    // The tug, front (coupling end) at z = -2.7, rear at z = -6.3, 2 m wide.
    const float front = -2.70f, rear = -6.30f;
    m.box({-1.05f, g + 0.20f, front - 0.15f}, {1.05f, g + 0.60f, front}, s.hazard);          // front bumper
    m.box({-1.05f, g + 0.20f, rear}, {1.05f, g + 0.55f, rear + 0.15f}, s.chassis);           // rear bumper
    m.box({-1.00f, g + 0.25f, rear + 0.15f}, {1.00f, g + 0.85f, front - 0.15f}, s.body);     // chassis
    m.box({-0.95f, g + 0.85f, rear + 0.20f}, {0.95f, g + 1.35f, rear + 1.80f}, s.body);      // engine cover
    m.box({-0.85f, g + 0.85f, front - 0.65f}, {0.85f, g + 1.00f, front - 0.15f}, s.chassis); // front deck
    // Cab between deck and engine, glass front and back, a roof with a beacon.
    m.box({-0.90f, g + 0.85f, rear + 1.80f}, {0.90f, g + 2.10f, front - 0.65f}, s.cab);
    m.box({-0.98f, g + 2.10f, rear + 1.70f}, {0.98f, g + 2.20f, front - 0.55f}, s.body);
    m.box({-0.12f, g + 2.20f, rear + 2.40f}, {0.12f, g + 2.40f, rear + 2.64f}, s.beacon);
    // Lettered panels on the engine cover's sides.
    m.box({-0.96f, g + 0.95f, rear + 0.30f}, {0.96f, g + 1.25f, rear + 1.70f}, s.lettered);
    // Headlamps facing the aircraft, tail lamps behind.
    for (float x : {-0.70f, 0.70f}) {
        m.box({x - 0.14f, g + 0.62f, front - 0.02f}, {x + 0.14f, g + 0.80f, front + 0.02f}, s.headlamp);
        m.box({x - 0.10f, g + 0.60f, rear - 0.02f}, {x + 0.10f, g + 0.72f, rear + 0.01f}, s.beacon);
    }
    const float steeredZ = front - 0.75f; // the axle nearer the aircraft steers
    for (float x : {-1.00f, 1.00f})
        for (float z : {steeredZ, rear + 0.95f})
            TugWheel(m, s, x, z, kTugTyreRadiusM, 0.35f, z == steeredZ);
    m.light({0.0f, g + 2.45f, rear + 2.52f}, 1.0f, 0.55f, 0.05f);
    m.light({-0.70f, g + 0.71f, front + 0.05f}, 1.0f, 1.0f, 0.9f);
    m.light({0.70f, g + 0.71f, front + 0.05f}, 1.0f, 1.0f, 0.9f);
    return m.finish("KLVdefault.png", "KLVdefaultLIT.png");
}

XObj8 TowbarlessTug() {
    const AtlasSkin s = Skin();
    MeshBuilder m;
    const float g = kGroundY;
    // Low body 3.6 m wide, 8 m long; its U-shaped front holds the nose wheel at the origin.
    const float armTip = 1.40f, cradleBack = -1.30f, rear = -6.60f;
    m.box({-1.80f, g + 0.20f, rear}, {1.80f, g + 0.95f, cradleBack}, s.body);
    for (float side : {-1.0f, 1.0f}) {
        const float inner = 1.00f * side, outer = 1.80f * side;
        m.box({side < 0 ? outer : inner, g + 0.20f, cradleBack},
              {side < 0 ? inner : outer, g + 0.85f, armTip}, s.body);
        m.box({side < 0 ? outer : inner, g + 0.20f, armTip},
              {side < 0 ? inner : outer, g + 0.85f, armTip + 0.12f}, s.hazard);
    }
    // Cradle: a plate just off the apron and a clamp wall behind the wheel.
    m.box({-1.00f, g + 0.08f, cradleBack}, {1.00f, g + 0.16f, 0.70f}, s.metal);
    m.box({-1.00f, g + 0.16f, cradleBack}, {1.00f, g + 0.65f, cradleBack + 0.20f}, s.hazard);
    for (float x : {-0.95f, 0.95f}) // clamp arms along the inner walls
        m.box({x - 0.05f, g + 0.30f, -0.60f}, {x + 0.05f, g + 0.55f, 0.55f}, s.chassis);
    // Low cab on the right rear, engine deck on the left, lettering along the sides.
    m.box({0.40f, g + 0.95f, rear + 0.20f}, {1.75f, g + 1.95f, rear + 1.90f}, s.cab);
    m.box({0.35f, g + 1.95f, rear + 0.15f}, {1.80f, g + 2.05f, rear + 1.95f}, s.body);
    m.box({1.00f, g + 2.05f, rear + 0.90f}, {1.24f, g + 2.25f, rear + 1.14f}, s.beacon);
    m.box({-1.75f, g + 0.95f, rear + 0.20f}, {0.20f, g + 1.30f, cradleBack - 0.80f}, s.body);
    m.box({-1.82f, g + 0.35f, rear + 1.60f}, {1.82f, g + 0.80f, rear + 3.90f},
          s.lettered); // between the wheels
    m.box({-1.85f, g + 0.15f, rear - 0.12f}, {1.85f, g + 0.50f, rear}, s.chassis);
    for (float x : {-1.40f, 1.40f}) {
        m.box({x - 0.16f, g + 0.55f, armTip + 0.12f}, {x + 0.16f, g + 0.75f, armTip + 0.15f}, s.headlamp);
        m.box({x - 0.12f, g + 0.55f, rear - 0.15f}, {x + 0.12f, g + 0.70f, rear - 0.12f}, s.beacon);
    }
    const float steeredZ = -2.10f; // the axle nearer the aircraft steers
    for (float x : {-1.90f, 1.90f})
        for (float z : {steeredZ, rear + 1.00f})
            TugWheel(m, s, x, z, kTugTyreRadiusM, 0.45f, z == steeredZ);
    m.light({1.12f, g + 2.30f, rear + 1.02f}, 1.0f, 0.55f, 0.05f);
    m.light({-1.40f, g + 0.65f, armTip + 0.18f}, 1.0f, 1.0f, 0.9f);
    m.light({1.40f, g + 0.65f, armTip + 0.18f}, 1.0f, 1.0f, 0.9f);
    return m.finish("KLVtowbarless.png", "KLVtowbarlessLIT.png");
}

XObj8 GroundPowerUnit() {
    const AtlasSkin s = Skin();
    MeshBuilder m;
    const float g = kGroundY;
    // Cart 2 m long, 1.1 m wide, 1.35 m high, its long side along Z.
    m.box({-0.55f, g + 0.30f, -1.00f}, {0.55f, g + 1.55f, 1.00f}, s.body);
    m.box({-0.60f, g + 1.55f, -1.05f}, {0.60f, g + 1.65f, 1.05f}, s.chassis);
    m.box({-0.58f, g + 0.85f, 0.10f}, {0.58f, g + 1.40f, 0.90f}, s.panel); // control panels both sides
    m.box({-0.57f, g + 0.40f, -0.90f}, {0.57f, g + 0.75f, -0.10f}, s.lettered);
    m.box({-0.50f, g + 0.22f, -1.00f}, {0.50f, g + 0.30f, 1.00f}, s.chassis);
    // Drawbar at the front.
    m.beam({0.0f, g + 0.40f, -1.00f}, {0.0f, g + 0.25f, -1.90f}, 0.07f, s.metal.side);
    m.box({-0.12f, g + 0.20f, -2.00f}, {0.12f, g + 0.30f, -1.85f}, s.metal);
    for (float x : {-0.50f, 0.50f})
        for (float z : {-0.75f, 0.75f})
            GroundWheel(m, s, x, z, 0.20f, 0.15f);
    // Cable from the rear socket along the apron to the nose's power socket (back-left of the cart,
    // where the plug-in places it beside the nose gear), rising to the fuselage.
    const V3 cable[] = {{-0.56f, g + 0.70f, 0.95f}, {-0.75f, g + 0.10f, 1.10f}, {-1.00f, g + 0.03f, 1.40f},
                        {-1.80f, g + 0.03f, 2.10f}, {-2.50f, g + 0.05f, 2.60f}, {-2.85f, g + 0.40f, 2.85f},
                        {-3.00f, g + 1.30f, 2.95f}};
    for (size_t i = 0; i + 1 < sizeof cable / sizeof cable[0]; ++i)
        m.beam(cable[i], cable[i + 1], 0.05f, s.cable);
    m.box({-3.06f, g + 1.30f, 2.89f}, {-2.94f, g + 1.45f, 3.01f}, s.chassis); // the plug
    m.light({0.0f, g + 1.70f, 0.0f}, 0.2f, 1.0f, 0.3f);                       // "running" lamp
    return m.finish("GPU.png", "GPULIT.png");
}

} // namespace assets
