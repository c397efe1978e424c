// PNG load time: the bitmap reader (file into memory, libpng's progressive
// reader with gamma and expansion, rows flipped bottom first) against libpng's
// simplified API (png_image_begin_read_from_file + png_image_finish_read) on
// the same files, and the ratio of the two per file.
#include "images/ImageFiles.h"

#include <benchmark/benchmark.h>
#include <png.h>

#include <cstdio>
#include <map>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

/// Real textures and PngSuite pictures, from the corpus beside the repository.
const char* const kFiles[] = {
    "images/xplane_textures/KSBD_example.png",   // 512 x 256 RGBA scenery texture
    "images/xplane_textures/osm2xp_transf5.png", // 512 x 256 RGB
    "images/pngsuite/basn6a08.png",              // 32 x 32 RGBA
    "images/pngsuite/basi2c16.png",              // 32 x 32 RGB, 16-bit, interlaced
};

std::string PathOf(int index) {
    return std::string(KALVORA_CORPUS_DIR) + "/" + kFiles[index];
}

bool Exists(const std::string& path) {
    struct stat st {};
    return stat(path.c_str(), &st) == 0;
}

void BM_BitmapReader(benchmark::State& state) {
    const std::string path = PathOf(static_cast<int>(state.range(0)));
    if (!Exists(path)) {
        state.SkipWithError("corpus file missing");
        return;
    }
    for (auto _ : state) {
        ImageInfo info{nullptr, 0, 0, 0, 0};
        if (CreateBitmapFromPNG(path.c_str(), &info) != 0) {
            state.SkipWithError("the reader refused the file");
            return;
        }
        benchmark::DoNotOptimize(info.data);
        DestroyBitmap(&info);
    }
    state.SetLabel(kFiles[state.range(0)]);
}

void BM_LibpngSimplified(benchmark::State& state) {
    const std::string path = PathOf(static_cast<int>(state.range(0)));
    if (!Exists(path)) {
        state.SkipWithError("corpus file missing");
        return;
    }
    std::vector<unsigned char> pixels;
    for (auto _ : state) {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        if (!png_image_begin_read_from_file(&image, path.c_str())) {
            state.SkipWithError("libpng refused the file");
            return;
        }
        // Same channels as the bitmap reader delivers: RGB, or RGBA when there is alpha.
        image.format = (image.format & PNG_FORMAT_FLAG_ALPHA) ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
        pixels.resize(PNG_IMAGE_SIZE(image));
        // A negative row stride stores the bottom row first, as the bitmap reader does.
        if (!png_image_finish_read(&image, nullptr, pixels.data(),
                                   -static_cast<png_int_32>(PNG_IMAGE_ROW_STRIDE(image)), nullptr)) {
            state.SkipWithError("libpng could not finish the file");
            return;
        }
        benchmark::DoNotOptimize(pixels.data());
    }
    state.SetLabel(kFiles[state.range(0)]);
}

constexpr int kFileCount = static_cast<int>(sizeof kFiles / sizeof kFiles[0]);

BENCHMARK(BM_BitmapReader)->DenseRange(0, kFileCount - 1);
BENCHMARK(BM_LibpngSimplified)->DenseRange(0, kFileCount - 1);

/// Prints the usual table, then the bitmap reader's time over libpng's for each file.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred || run.iterations == 0) continue;
            const std::string name = run.benchmark_name();
            // CPU time: steadier than wall time on a shared machine.
            const double perIteration = run.GetAdjustedCPUTime();
            const std::string file = name.substr(name.find('/') + 1);
            (name.rfind("BM_BitmapReader", 0) == 0 ? ours_ : simplified_)[file] = perIteration;
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\nPNG load time (CPU), bitmap reader / libpng simplified API:\n");
        for (const auto& [file, ours] : ours_) {
            auto other = simplified_.find(file);
            if (other == simplified_.end() || other->second <= 0) continue;
            std::printf("  %-45s %.2f\n", kFiles[std::stoi(file)], ours / other->second);
        }
    }

private:
    std::map<std::string, double> ours_, simplified_;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
