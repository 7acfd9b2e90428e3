#pragma once

#include <filesystem>
#include <string>

#include "apps/demo/transcript.h"

// The scenes that tessaline-demo plays on the headless backend.
namespace tessaline::demo {

// The Overview's edit: a device value, a user's edit, the host's check, the modified mark.
void playOneEdit(Transcript& t);
// Keys into a 5.2f number (taken and refused), a paste, and the multi-line box's refusal of
// an empty number.
void playTyping(Transcript& t);
// A small dialog: a text box, a combo box with an includeIf entry, a second combo box with a
// value that has no entry, a data label and a launch label with flags. The form is saved to a
// file in `out`, loaded into fresh controls and compared.
void playDialog(Transcript& t, const std::filesystem::path& out);
// Sample charts written as PNG files into `out`.
void playCharts(Transcript& t, const std::filesystem::path& out);
// The three gauges fed by a simulated device through the subscription exchange; their pictures
// are written as PNG files into `out`.
void playGauges(Transcript& t, const std::filesystem::path& out);
// The two single-item trends fed by a simulated device for an hour on a fast clock; their
// pictures at several moments are written into `out`.
void playTrends(Transcript& t, const std::filesystem::path& out);
void playMultiTrendAndWaveForm(Transcript& t, const std::filesystem::path& out);
// A check box toggled with the mouse and a date picked from the calendar and typed into a field,
// each marked, read and cleared by the host, and a bad device value that changes nothing.
void playCheckAndDate(Transcript& t);
// A navigation menu driving dialogs: the user clicks entries and bars, the host receives
// LoadDialog and opens the named dialog, whose launch button the user clicks. The bars'
// pictures are written into `out`/images.
void playNavigation(Transcript& t, const std::filesystem::path& out);

}  // namespace tessaline::demo
