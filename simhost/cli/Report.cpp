// Writing a scenario's report folder.
#include "Report.h"
#include "utils/Utf8Path.h"

#include "Canvas.h"
#include "simhost/Simhost.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace simhost::cli {

namespace {

namespace fs = std::filesystem;

constexpr double kSvgSizePx = 800;          // drawing area, pixels
constexpr double kSvgMarginPx = 40;         // around the drawing
constexpr double kMinExtentM = 40;          // smallest area shown, metres
constexpr double kSameMomentSeconds = 0.05; // a frame at 20 fps
constexpr float kPngTextScale = 2;          // pixels per font unit of the PNG's labels
constexpr const char* kLegend = "blue: start, brown: end, black: nose gear, orange dashed: truck";

struct Point {
    double x, z; // metres, local frame (+x east, +z south)
};

/// The aircraft's outline in its body frame (x right, z aft, metres) from its half span and half length.
std::vector<Point> BodyOutline(const Aircraft& a) {
    const double s = a.sizeX > 0 ? a.sizeX : 10; // half span
    const double l = a.sizeZ > 0 ? a.sizeZ : 10; // half length
    const double w = std::max(0.5, 0.11 * s);    // half fuselage width
    const std::vector<Point> right = {{0, -l},       {w, -0.85 * l}, {w, -0.2 * l}, {s, 0.22 * l},
                                      {s, 0.32 * l}, {w, 0.12 * l},  {w, 0.72 * l}, {0.35 * s, 0.9 * l},
                                      {0.35 * s, l}, {0, 0.95 * l}};
    std::vector<Point> outline = right;
    for (auto it = right.rbegin() + 1; it != right.rend() - 1; ++it)
        outline.push_back({-it->x, it->z});
    return outline;
}

Point ToLocal(const Point& body, double x, double z, double headingDeg) {
    const double h = headingDeg * M_PI / 180;
    return {x + body.x * std::cos(h) - body.z * std::sin(h), z + body.x * std::sin(h) + body.z * std::cos(h)};
}

std::vector<Point> Footprint(const Aircraft& a, const TraceRow& r) {
    std::vector<Point> out;
    for (const Point& p : BodyOutline(a))
        out.push_back(ToLocal(p, r.aircraftX, r.aircraftZ, r.aircraftHeading));
    return out;
}

/// Truck positions from the moment the plug-in first placed it.
std::vector<Point> TruckPath(const ScenarioSummary& s) {
    std::vector<Point> out;
    if (s.trace.empty()) return out;
    const TraceRow& first = s.trace.front();
    bool placed = false;
    for (const TraceRow& r : s.trace) {
        placed = placed || r.truckX != first.truckX || r.truckZ != first.truckZ;
        if (placed) out.push_back({r.truckX, r.truckZ});
    }
    return out;
}

/// What the top view shows and how metres map to pixels (x east to the right, z south down).
struct TopView {
    std::vector<Point> start, end, gear, truck;
    double ox = 0, oz = 0; ///< metres at the drawing's top-left corner
    double scale = 1;      ///< pixels per metre
    double barM = 5;       ///< length of the scale bar, metres
    double sizePx = 0;     ///< picture side, pixels
    double PxX(const Point& p) const { return kSvgMarginPx + (p.x - ox) * scale; }
    double PxY(const Point& p) const { return kSvgMarginPx + (p.z - oz) * scale; }
};

TopView MakeTopView(const ScenarioSummary& s, const Aircraft& aircraft) {
    TopView v;
    v.start = Footprint(aircraft, s.trace.front());
    v.end = Footprint(aircraft, s.trace.back());
    v.truck = TruckPath(s);
    for (const TraceRow& r : s.trace)
        v.gear.push_back({r.noseGearX, r.noseGearZ});
    double minX = 1e300, maxX = -1e300, minZ = 1e300, maxZ = -1e300;
    for (const std::vector<Point>* set : {&v.start, &v.end, &v.gear, &v.truck})
        for (const Point& p : *set) {
            minX = std::min(minX, p.x);
            maxX = std::max(maxX, p.x);
            minZ = std::min(minZ, p.z);
            maxZ = std::max(maxZ, p.z);
        }
    const double extent = std::max({maxX - minX, maxZ - minZ, kMinExtentM});
    v.scale = kSvgSizePx / extent;
    v.ox = (minX + maxX) / 2 - extent / 2;
    v.oz = (minZ + maxZ) / 2 - extent / 2;
    v.sizePx = kSvgSizePx + 2 * kSvgMarginPx;
    // Scale bar: the largest of 5, 10, 20, 50, 100 m that fits a quarter of the picture.
    for (double b : {10.0, 20.0, 50.0, 100.0})
        if (b * v.scale <= kSvgSizePx / 4) v.barM = b;
    return v;
}

std::string Polyline(const std::vector<Point>& pts, const TopView& v, const char* style, bool closed) {
    std::ostringstream out;
    out << (closed ? "<polygon" : "<polyline") << " points=\"";
    char xy[64];
    for (const Point& p : pts) {
        std::snprintf(xy, sizeof xy, "%.1f,%.1f ", v.PxX(p), v.PxY(p));
        out << xy;
    }
    out << "\" " << style << "/>\n";
    return out.str();
}

/// Even-odd scanline fill of a polygon, sampled at pixel centres.
void FillPolygon(assets::Canvas& canvas, const TopView& v, const std::vector<Point>& pts, assets::Colour c) {
    const size_t n = pts.size();
    if (n < 3) return;
    for (int y = 0; y < canvas.height(); ++y) {
        const double sy = y + 0.5;
        std::vector<double> xs;
        for (size_t i = 0; i < n; ++i) {
            const double y0 = v.PxY(pts[i]), y1 = v.PxY(pts[(i + 1) % n]);
            if ((y0 <= sy) == (y1 <= sy)) continue;
            const double x0 = v.PxX(pts[i]), x1 = v.PxX(pts[(i + 1) % n]);
            xs.push_back(x0 + (sy - y0) / (y1 - y0) * (x1 - x0));
        }
        std::sort(xs.begin(), xs.end());
        for (size_t k = 0; k + 1 < xs.size(); k += 2)
            for (int x = static_cast<int>(std::ceil(xs[k] - 0.5)); x < xs[k + 1] - 0.5; ++x)
                canvas.blend(x, y, c);
    }
}

/// A path drawn as discs every pixel along it; dashed paths skip every other 6 pixels.
void StrokePath(assets::Canvas& canvas, const TopView& v, const std::vector<Point>& pts, assets::Colour c,
                float widthPx, bool dashed) {
    constexpr double kDashPx = 6;
    double along = 0;
    for (size_t i = 1; i < pts.size(); ++i) {
        const double x0 = v.PxX(pts[i - 1]), y0 = v.PxY(pts[i - 1]);
        const double dx = v.PxX(pts[i]) - x0, dy = v.PxY(pts[i]) - y0;
        const double length = std::hypot(dx, dy);
        for (double t = 0; t < length; t += 1.0, along += 1.0)
            if (!dashed || std::fmod(along, 2 * kDashPx) < kDashPx)
                canvas.fillEllipse(static_cast<float>(x0 + dx * t / length),
                                   static_cast<float>(y0 + dy * t / length), widthPx / 2, widthPx / 2, c);
    }
}

bool WriteFile(const std::string& path, const std::string& text) {
    std::ofstream out(HV_FileUtils::PathFromUtf8(path), std::ios::binary);
    out << text;
    return static_cast<bool>(out);
}

// ---- crew.wav: the speech files placed at the sim times they were spoken ----

struct Pcm {
    uint16_t channels = 0;
    uint32_t rate = 0;
    uint16_t bits = 0;
    std::vector<char> data;
};

uint32_t Le32(const char* p) {
    return static_cast<uint32_t>(static_cast<unsigned char>(p[0])) |
           static_cast<uint32_t>(static_cast<unsigned char>(p[1])) << 8 |
           static_cast<uint32_t>(static_cast<unsigned char>(p[2])) << 16 |
           static_cast<uint32_t>(static_cast<unsigned char>(p[3])) << 24;
}

uint16_t Le16(const char* p) {
    return static_cast<uint16_t>(static_cast<unsigned char>(p[0]) | static_cast<unsigned char>(p[1]) << 8);
}

/// Reads a PCM WAV file chunk by chunk; false for anything else.
bool ReadWav(const std::string& path, Pcm* pcm) {
    std::ifstream in(HV_FileUtils::PathFromUtf8(path), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (bytes.size() < 12 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0)
        return false;
    size_t at = 12;
    bool haveFormat = false;
    while (at + 8 <= bytes.size()) {
        const std::string id = bytes.substr(at, 4);
        const uint32_t size = Le32(&bytes[at + 4]);
        const size_t body = at + 8;
        const size_t available = std::min<size_t>(size, bytes.size() - body);
        if (id == "fmt " && available >= 16) {
            if (Le16(&bytes[body]) != 1) return false; // PCM only
            pcm->channels = Le16(&bytes[body + 2]);
            pcm->rate = Le32(&bytes[body + 4]);
            pcm->bits = Le16(&bytes[body + 14]);
            haveFormat = true;
        } else if (id == "data") {
            pcm->data.assign(bytes.begin() + static_cast<long>(body),
                             bytes.begin() + static_cast<long>(body + available));
        }
        at = body + size + (size & 1);
    }
    return haveFormat && pcm->channels > 0 && pcm->rate > 0 && pcm->bits > 0;
}

void PutLe(std::string& out, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

/// Places each utterance at its sim time (later ones wait for the previous to finish).
bool WriteCrewWav(const std::string& audioDir, const std::vector<double>& times, const std::string& path) {
    std::vector<std::string> files;
    if (!fs::is_directory(HV_FileUtils::PathFromUtf8(audioDir))) return false;
    for (const auto& e : fs::directory_iterator(HV_FileUtils::PathFromUtf8(audioDir)))
        if (e.path().extension() == ".wav") files.push_back(HV_FileUtils::Utf8FromPath(e.path()));
    std::sort(files.begin(), files.end());
    if (files.empty()) return false;
    std::vector<char> mix;
    Pcm format;
    for (size_t i = 0; i < files.size(); ++i) {
        Pcm pcm;
        if (!ReadWav(files[i], &pcm)) continue;
        if (format.rate == 0) format = pcm;
        if (pcm.rate != format.rate || pcm.channels != format.channels || pcm.bits != format.bits) continue;
        const size_t frameBytes = static_cast<size_t>(format.channels) * format.bits / 8;
        const double t = i < times.size() ? times[i] : 0;
        const size_t start = static_cast<size_t>(t * format.rate) * frameBytes;
        if (mix.size() < start) mix.resize(start, 0);
        mix.insert(mix.end(), pcm.data.begin(), pcm.data.end());
    }
    if (format.rate == 0) return false;
    std::string out = "RIFF";
    PutLe(out, static_cast<uint32_t>(36 + mix.size()), 4);
    out += "WAVEfmt ";
    PutLe(out, 16, 4);
    PutLe(out, 1, 2);
    PutLe(out, format.channels, 2);
    PutLe(out, format.rate, 4);
    PutLe(out, format.rate * format.channels * format.bits / 8, 4);
    PutLe(out, format.channels * format.bits / 8, 2);
    PutLe(out, format.bits, 2);
    out += "data";
    PutLe(out, static_cast<uint32_t>(mix.size()), 4);
    out.append(mix.begin(), mix.end());
    return WriteFile(path, out);
}

std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"") == std::string::npos) return text;
    std::string out = "\"";
    for (char c : text)
        out += c == '"' ? std::string("\"\"") : std::string(1, c);
    return out + "\"";
}

} // namespace

bool SpeechSynthesisAvailable() {
    const char* path = std::getenv("PATH");
    std::istringstream dirs(path ? path : "");
    std::string dir;
    while (std::getline(dirs, dir, ':'))
        if (!dir.empty() && access((dir + "/espeak-ng").c_str(), X_OK) == 0) return true;
    return false;
}

std::string TopViewSvg(const ScenarioSummary& s, const Aircraft& aircraft) {
    if (s.trace.empty()) return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\"/>\n";
    const TopView v = MakeTopView(s, aircraft);
    const double size = v.sizePx;
    std::ostringstream svg;
    svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << size << "\" height=\"" << size
        << "\" viewBox=\"0 0 " << size << " " << size << "\" font-family=\"sans-serif\" font-size=\"14\">\n";
    svg << "<rect width=\"100%\" height=\"100%\" fill=\"#e9eae4\"/>\n";
    svg << Polyline(v.start, v, "fill=\"#9db4d8\" fill-opacity=\"0.6\" stroke=\"#3a5a8c\"", true);
    svg << Polyline(v.end, v, "fill=\"#d8b49d\" fill-opacity=\"0.6\" stroke=\"#8c5a3a\"", true);
    svg << Polyline(v.gear, v, "fill=\"none\" stroke=\"#1b1b1b\" stroke-width=\"2\"", false);
    if (!v.truck.empty())
        svg << Polyline(v.truck, v,
                        "fill=\"none\" stroke=\"#e08a00\" stroke-width=\"2\" stroke-dasharray=\"6 4\"",
                        false);
    const double y = size - kSvgMarginPx / 2;
    svg << "<line x1=\"" << kSvgMarginPx << "\" y1=\"" << y << "\" x2=\"" << kSvgMarginPx + v.barM * v.scale
        << "\" y2=\"" << y << "\" stroke=\"black\" stroke-width=\"3\"/>\n";
    svg << "<text x=\"" << kSvgMarginPx + v.barM * v.scale + 8 << "\" y=\"" << y + 5 << "\">" << v.barM
        << " m</text>\n";
    svg << "<text x=\"" << size - kSvgMarginPx << "\" y=\"" << kSvgMarginPx / 2 + 5
        << "\" text-anchor=\"end\">N up</text>\n";
    svg << "<text x=\"" << kSvgMarginPx << "\" y=\"" << kSvgMarginPx / 2 + 5 << "\">" << kLegend
        << "</text>\n";
    svg << "</svg>\n";
    return svg.str();
}

bool WriteTopViewPng(const ScenarioSummary& s, const Aircraft& aircraft, const std::string& path) {
    if (s.trace.empty()) return false;
    const TopView v = MakeTopView(s, aircraft);
    const int size = static_cast<int>(v.sizePx);
    assets::Canvas canvas(size, size, {0xe9, 0xea, 0xe4});
    FillPolygon(canvas, v, v.start, {0x9d, 0xb4, 0xd8, 160});
    FillPolygon(canvas, v, v.end, {0xd8, 0xb4, 0x9d, 160});
    StrokePath(canvas, v, v.gear, {0x1b, 0x1b, 0x1b}, 2.5f, false);
    StrokePath(canvas, v, v.truck, {0xe0, 0x8a, 0x00}, 2.5f, true);
    const int y = size - static_cast<int>(kSvgMarginPx / 2);
    const int barPx = static_cast<int>(v.barM * v.scale);
    canvas.fillRect(static_cast<int>(kSvgMarginPx), y - 1, static_cast<int>(kSvgMarginPx) + barPx, y + 2,
                    {0, 0, 0});
    char bar[32];
    std::snprintf(bar, sizeof bar, "%g m", v.barM);
    canvas.text(static_cast<int>(kSvgMarginPx) + barPx + 8, y - 6, bar, kPngTextScale, {0, 0, 0});
    canvas.text(static_cast<int>(kSvgMarginPx), static_cast<int>(kSvgMarginPx / 2) - 6, kLegend,
                kPngTextScale, {0, 0, 0});
    return canvas.writePng(path);
}

void WriteReport(const std::string& dir, const Scenario& scenario, const ScenarioSummary& summary, Host& host,
                 const std::vector<std::string>& frames) {
    fs::create_directories(HV_FileUtils::PathFromUtf8(dir));
    std::ostringstream transcript;
    std::vector<double> speechTimes;
    char time[32];
    size_t pilot = 0; // the pilot's actions go in before what the host recorded at the same time
    for (const TranscriptEntry& e : host.transcript()) {
        for (; pilot < summary.pilot.size() && summary.pilot[pilot].first <= e.simTime + kSameMomentSeconds;
             ++pilot) {
            std::snprintf(time, sizeof time, "%8.2f", summary.pilot[pilot].first);
            transcript << time << "  pilot  " << summary.pilot[pilot].second << "\n";
        }
        std::snprintf(time, sizeof time, "%8.2f", e.simTime);
        transcript << time << "  " << e.kind << "  " << e.text << "\n";
        if (e.kind == "speech") speechTimes.push_back(e.simTime);
    }
    for (; pilot < summary.pilot.size(); ++pilot) {
        std::snprintf(time, sizeof time, "%8.2f", summary.pilot[pilot].first);
        transcript << time << "  pilot  " << summary.pilot[pilot].second << "\n";
    }
    WriteFile(dir + "/transcript.txt", transcript.str());

    std::ostringstream csv;
    csv << "sim_time,aircraft_x,aircraft_z,aircraft_heading,nose_gear_x,nose_gear_z,truck_x,truck_z,truck_"
           "heading,"
           "phase\n";
    char row[256];
    for (const TraceRow& r : summary.trace) {
        // Positions to 0.1 micrometre, so that runs can be compared far below a millimetre.
        std::snprintf(row, sizeof row, "%.4f,%.7f,%.7f,%.7f,%.7f,%.7f,%.7f,%.7f,%.7f,", r.simTime,
                      r.aircraftX, r.aircraftZ, r.aircraftHeading, r.noseGearX, r.noseGearZ, r.truckX,
                      r.truckZ, r.truckHeading);
        csv << row << CsvField(r.phase) << "\n";
    }
    WriteFile(dir + "/trace.csv", csv.str());
    WriteFile(dir + "/top-view.svg", TopViewSvg(summary, host.aircraft()));
    WriteTopViewPng(summary, host.aircraft(), dir + "/top-view.png");
    WriteFile(dir + "/Log.txt", host.logText());
    WriteFile(dir + "/menus.txt", host.menuTree());
    const std::string pluginLog = host.sandbox() + "Resources/plugins/Kalvora/Kalvora.log";
    if (fs::exists(HV_FileUtils::PathFromUtf8(pluginLog)))
        fs::copy_file(HV_FileUtils::PathFromUtf8(pluginLog), HV_FileUtils::PathFromUtf8(dir + "/Kalvora.log"),
                      fs::copy_options::overwrite_existing);
    std::string summaryText = formatSummary(scenario, summary);
    if (WriteCrewWav(dir + "/audio", speechTimes, dir + "/crew.wav")) summaryText += "crew audio: crew.wav\n";
    summaryText += "frames: " + std::to_string(frames.size()) +
                   (frames.empty() ? " (rendered only when OpenGL is available)\n" : "\n");
    WriteFile(dir + "/summary.txt", summaryText);
}

} // namespace simhost::cli
