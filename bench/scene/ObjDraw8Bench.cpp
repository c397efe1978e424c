// ObjDraw8's command walk apart from rasterising, inside simhost's headless OpenGL
// context. Rasterisation is off (GL_RASTERIZER_DISCARD), and each iteration draws the
// model with ObjDraw8 and then as the bare glDrawElements calls of the same triangle
// runs: OpenGL's vertex work is the same on both sides, so the difference is the walk
// (command dispatch, set-up callbacks, state changes, animation and error checks).
// Each side starts from the same GL state, saved before and restored after it, so
// neither inherits what the other left; batches of draws keep the clock reads small.
#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"

#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/ObjDraw8.h"

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFrameSidePx = 256;  ///< the frame the model is set up in (nothing reaches it)
constexpr int kDrawsPerBatch = 16; ///< draws between two clock reads

/// The host with the GL context, made by the first benchmark and ended before the program ends.
std::unique_ptr<simhost::Host> host;

/// Reads a model, or null when it is missing or invalid.
std::shared_ptr<XObj8> Load(const std::string& path) {
    auto obj = std::make_shared<XObj8>();
    std::string why;
    if (!XObj8Read(path.c_str(), *obj) || !XObj8Validate(*obj, &why)) return nullptr;
    return obj;
}

/// Starts a frame with the model 30 m in front of the camera; false when there is no GL.
bool BeginFrame() {
    if (!host) {
        simhost::HostOptions o;
        o.render = true;
        host = std::make_unique<simhost::Host>(o);
        simhost::InProcessPlugin p;
        p.name = "SceneBench";
        p.signature = "kalvora.bench.scene";
        host->setDirectCaller(host->addPlugin(p));
    }
    if (!simhost::gfx::beginFrame(kFrameSidePx, kFrameSidePx)) return false;
    simhost::gfx::View view;
    view.z = 30;
    simhost::gfx::setup3D(view);
    glDisable(GL_LIGHTING);
    return true;
}

/// The level ObjDraw8 draws at distance 0: the last whose range holds 0.
const XObjLOD8& NearestLevel(const XObj8& obj) {
    const XObjLOD8* lod = &obj.lods.back();
    for (const XObjLOD8& l : obj.lods)
        if (l.lodNear <= 0.0f && 0.0f <= l.lodFar) lod = &l;
    return *lod;
}

/// Seconds `draw` takes kDrawsPerBatch times, from the saved GL state, which is restored after.
template <class Draw> double TimedBatch(Draw&& draw) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glEnable(GL_RASTERIZER_DISCARD);
    const auto t0 = Clock::now();
    for (int i = 0; i < kDrawsPerBatch; ++i)
        draw();
    const double seconds = std::chrono::duration<double>(Clock::now() - t0).count();
    glDisable(GL_RASTERIZER_DISCARD);
    glPopClientAttrib();
    glPopAttrib();
    return seconds;
}

void BM_ObjDraw8Walk(benchmark::State& state, const std::string& path) {
    const auto obj = Load(path);
    if (!obj) {
        state.SkipWithError(("cannot read " + path).c_str());
        return;
    }
    if (!BeginFrame()) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    const XObjLOD8& lod = NearestLevel(*obj);
    std::vector<const XObjCmd8*> tris;
    for (const XObjCmd8& c : lod.cmds)
        if (c.id == obj8_Tris) tris.push_back(&c);
    const GLsizei stride = 8 * sizeof(float);
    const float* base = obj->geoTris.data.data();
    auto bare = [&] {
        glEnable(GL_TEXTURE_2D);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glVertexPointer(3, GL_FLOAT, stride, base);
        glNormalPointer(GL_FLOAT, stride, base + 3);
        glTexCoordPointer(2, GL_FLOAT, stride, base + 6);
        for (const XObjCmd8* c : tris)
            glDrawElements(GL_TRIANGLES, c->idxCount, GL_UNSIGNED_INT, obj->indices.data() + c->idxOffset);
    };
    double walkSeconds = 0, bareSeconds = 0;
    for (auto _ : state) {
        const double drawn = TimedBatch([&] { ObjDraw8(*obj, 0.0f, nullptr, nullptr); });
        bareSeconds += TimedBatch(bare);
        walkSeconds += drawn;
        state.SetIterationTime(drawn / kDrawsPerBatch);
    }
    glFinish();
    simhost::gfx::endFrame();
    const double draws = static_cast<double>(state.iterations()) * kDrawsPerBatch;
    state.counters["bare_us"] = bareSeconds / draws * 1e6;
    state.counters["walk_us"] = (walkSeconds - bareSeconds) / draws * 1e6;
    state.counters["commands"] = static_cast<double>(lod.cmds.size());
    state.counters["triangle_runs"] = static_cast<double>(tris.size());
}

const std::string kTruck = std::string(KALVORA_SOURCE_DIR) + "/assets/Kalvora/KLVdefault.obj";
const std::string kLargest = std::string(KALVORA_CORPUS_DIR) + "/obj8/marginal_Nimitz.obj";

} // namespace

BENCHMARK_CAPTURE(BM_ObjDraw8Walk, truck, kTruck)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_ObjDraw8Walk, largest_corpus, kLargest)->UseManualTime()->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    host.reset(); // before the renderer's own statics go
    return 0;
}
