// Drawing a model with ObjDraw8 against bare glDrawElements calls over the same
// triangle runs, inside simhost's headless OpenGL context. The ratio of the
// two is the cost of the command walk, the set-up callbacks and the error checks.
// glFinish after each draw makes the time the GPU's (llvmpipe's) too.
#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"

#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/ObjDraw8.h"

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kFrameSidePx = 256; ///< a small frame keeps rasterising from dominating

/// The host with the GL context, made by the first benchmark and ended before the program ends.
std::unique_ptr<simhost::Host> host;

simhost::Host* Context() {
    if (!host) {
        simhost::HostOptions o;
        o.render = true;
        host = std::make_unique<simhost::Host>(o);
        simhost::InProcessPlugin p;
        p.name = "SceneBench";
        p.signature = "kalvora.bench.scene";
        host->setDirectCaller(host->addPlugin(p));
    }
    return host.get();
}

/// Reads a model, or null when it is missing or invalid.
std::shared_ptr<XObj8> Load(const std::string& path) {
    auto obj = std::make_shared<XObj8>();
    std::string why;
    if (!XObj8Read(path.c_str(), *obj) || !XObj8Validate(*obj, &why)) return nullptr;
    return obj;
}

/// Starts a frame with the model 30 m in front of the camera; false when there is no GL.
bool BeginFrame(benchmark::State& state) {
    Context();
    if (!simhost::gfx::beginFrame(kFrameSidePx, kFrameSidePx)) {
        state.SkipWithError("no OpenGL context");
        return false;
    }
    simhost::gfx::View view;
    view.z = 30;
    simhost::gfx::setup3D(view);
    glDisable(GL_LIGHTING);
    return true;
}

/// The model ready to draw in a started frame, or null (the benchmark is skipped with the reason).
std::shared_ptr<XObj8> Prepare(benchmark::State& state, const std::string& path) {
    auto obj = Load(path);
    if (!obj) {
        state.SkipWithError(("cannot read " + path).c_str());
        return nullptr;
    }
    return BeginFrame(state) ? obj : nullptr;
}

void BM_ObjDraw8(benchmark::State& state, const std::string& path) {
    const auto obj = Prepare(state, path);
    if (!obj) return;
    for (auto _ : state) {
        ObjDraw8(*obj, 0.0f, nullptr, nullptr);
        glFinish();
    }
    simhost::gfx::endFrame();
    state.counters["indices"] = static_cast<double>(obj->indices.size());
}

void BM_BareDrawElements(benchmark::State& state, const std::string& path) {
    const auto obj = Prepare(state, path);
    if (!obj) return;
    const GLsizei stride = 8 * sizeof(float);
    const float* base = obj->geoTris.data.data();
    glEnable(GL_TEXTURE_2D);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, base);
    glNormalPointer(GL_FLOAT, stride, base + 3);
    glTexCoordPointer(2, GL_FLOAT, stride, base + 6);
    // The same triangle runs ObjDraw8 draws at distance 0 (the last level whose range holds 0).
    const XObjLOD8* lod = &obj->lods.back();
    for (const XObjLOD8& l : obj->lods)
        if (l.lodNear <= 0.0f && 0.0f <= l.lodFar) lod = &l;
    std::vector<const XObjCmd8*> tris;
    for (const XObjCmd8& c : lod->cmds)
        if (c.id == obj8_Tris) tris.push_back(&c);
    for (auto _ : state) {
        for (const XObjCmd8* c : tris)
            glDrawElements(GL_TRIANGLES, c->idxCount, GL_UNSIGNED_INT, obj->indices.data() + c->idxOffset);
        glFinish();
    }
    simhost::gfx::endFrame();
    state.counters["indices"] = static_cast<double>(obj->indices.size());
}

const std::string kTruck = std::string(KALVORA_SOURCE_DIR) + "/assets/Kalvora/KLVdefault.obj";
const std::string kLargest = std::string(KALVORA_CORPUS_DIR) + "/obj8/marginal_Nimitz.obj";

} // namespace

BENCHMARK_CAPTURE(BM_ObjDraw8, truck, kTruck)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_BareDrawElements, truck, kTruck)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_ObjDraw8, largest_corpus, kLargest)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_BareDrawElements, largest_corpus, kLargest)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    host.reset(); // before the renderer's own statics go
    return 0;
}
