// The report folder of a scenario run: what was said and logged, the per-frame
// trace, a top view of the paths, the rendered frames and the crew's audio.
#pragma once

#include "Scenarios.h"
#include "simhost/Simhost.h"

#include <string>
#include <vector>

namespace simhost::cli {

/// True when espeak-ng is on the PATH (the host then speaks into WAV files).
bool SpeechSynthesisAvailable();

/// Writes transcript.txt, trace.csv, top-view.svg, top-view.png, Log.txt, Kalvora.log, menus.txt, summary.txt
/// and, with speech or sound files, crew.wav into dir. frames are the rendered pictures already written.
void WriteReport(const std::string& dir, const Scenario& scenario, const ScenarioSummary& summary, Host& host,
                 const std::vector<std::string>& frames);

/// The top view as SVG: the aircraft footprint at start and end, nose-gear and truck paths, scale bar.
std::string TopViewSvg(const ScenarioSummary& summary, const Aircraft& aircraft);

/// The same top view as a PNG file; false when there is nothing to draw or it cannot be written.
bool WriteTopViewPng(const ScenarioSummary& summary, const Aircraft& aircraft, const std::string& path);

} // namespace simhost::cli
