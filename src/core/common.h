// Small routines that the whole program leans on: text of tags, numbers in text, files, fonts of the question
// "is it there".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/records.h"

namespace qrn {

// Tag text ----------------------------------------------------------------------------------------

// Splits `text` after cutting every trailing CR and LF. A separator that is CR LF, CR or LF stands for the
// one that the text uses (CR LF before CR before LF), so that a tag whose line ends a host has rewritten
// still splits. An empty text gives an empty result.
void SplitPPTTag(std::string text, std::string_view separator, std::vector<std::string>& result);

// Makes every CR LF, CR and LF a CR LF, in place. The marker "^|^" stands for a line end too.
void HomogoniseLineFeeds(std::string& text);

// Field `n` (1-based) of a comma-separated line without its double quotes; "" when there is none.
std::string getField(std::string_view line, int n);

// Numbers -----------------------------------------------------------------------------------------

// The classic value parse: blanks, sign, digits, point, exponent (E or D) at the start of the text; 0 when
// there is no number. Never depends on the locale.
double valueParse(std::string_view text);
// The same, but nothing when the text does not begin with a number.
std::optional<double> leadingNumber(std::string_view text);
// Whether the whole text, blanks around it aside, is one number.
bool isNumeric(std::string_view text);

// Number in text as a person or another program wrote it. Where the locale's decimal separator is not ".", it
// is made "." first; then ",", " ", "_", "#" and "%" fall out and the rest goes through the value parse.
double qrnVal(std::string_view text);
// The separator is taken from the locale at the first call; this sets another one ('\0': take it anew).
void setDecimalSeparator(char separator);

// The whole part plus 1 when there is a fraction, else the number itself. So it rounds up for positive values
// only: 2.1 gives 3, -1.5 gives 0. Values beyond 32 bits stop at the limits.
std::int32_t RoundUp(double x);

// Shortest plain text that reads back exactly; a point as decimal separator, no exponent for sizes in use.
std::string plainNumber(double value);
std::string plainNumber(float value);

// Rounded as the formats "0", "0.00" ... show a number: of its seven first digits, halves away from zero. 0
// for what is no number.
double roundPlaces(double value, int places);
// The same as text with a point in every locale.
std::string formatPlaces(double value, int places);

// Files and neighbours ----------------------------------------------------------------------------

bool fileExists(const std::string& path);
bool folderExists(const std::string& path);
// Whole content of a file, "" when it is missing. A failing read throws the HostError on.
std::string readTextFile(const std::string& path);

#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif
// `folder` and `tail` with one separator between them; backslashes in `tail` become the host's separator. An
// empty folder gives the tail alone.
std::string joinPath(const std::string& folder, const std::string& tail);

// Whether a form of one of the names is loaded.
bool Check4Form(const std::string& name1, const std::string& name2 = "", const std::string& name3 = "",
                const std::string& name4 = "");
// Whether a process of that name runs. "POWERPNT.EXE" asks the presentation program itself; for other names
// the machine answers.
bool Check4App(const std::string& exeName);

// Inside of the screen that the voting screens fill, in twips, as the run knows it.
ScreenDimensions GetScreenDimensions();
void setScreenDimensions(double width, double height);  // values of 0 or less are ignored

}  // namespace qrn
