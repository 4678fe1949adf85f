// The open end of the exercise text: settings that have come with the versions, each behind its name. A
// reader passes over names that it does not know.
#pragma once

#include "core/exercise.h"
#include "store/exercise_text_archive.h"

namespace qrn::mtx {

void writeNamedSettings(TextWriter& a, Exercise& x);
bool isSettingName(std::string_view name);           // one that is known here
void readNamedSettings(TextReader& a, Exercise& x);  // to the end of the text

}  // namespace qrn::mtx
