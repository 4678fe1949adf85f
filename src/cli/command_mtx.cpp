// mtx export and mtx import: the exercise text between a slide and a file.
#include <cstddef>
#include <iostream>
#include <set>
#include <string>

#include "base/errors.h"
#include "cli/commands.h"
#include "cli/workshop.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/system.h"
#include "store/exercise_text.h"

namespace qrn::cli {

namespace {

// The first names, and how many more there are.
std::string someOf(const std::set<std::string>& names) {
  constexpr std::size_t kMost = 5;
  std::string text;
  std::size_t told = 0;
  for (const std::string& name : names) {
    if (told == kMost)
      return text + " and " + std::to_string(names.size() - kMost) + " more";
    text += (told++ == 0 ? "" : ", ") + name;
  }
  return text;
}

}  // namespace

void runMtxExport(const MtxArguments& arguments, const CliHooks& hooks) {
  Workshop workshop(arguments, Access::read, hooks);
  workshop.loadExercise(arguments.slide);
  host::host().files->write(arguments.out, writeExercise(glo));
}

void runMtxImport(const MtxArguments& arguments, const CliHooks& hooks) {
  Workshop workshop(arguments, Access::write, hooks);
  workshop.selectSlide(arguments.slide);
  const std::string text = host::host().files->read(arguments.from);
  if (!looksLikeExerciseText(text))
    throw HostError(Fault::badData, 0, arguments.from + " is not an exercise text; nothing was changed");
  const ExerciseReading reading = readExercise(text, glo);
  if (!reading.itemsWhole)
    throw HostError(
        Fault::badData, 0,
        arguments.from + " is cut short or damaged: its list of items is not whole; nothing was changed");
  takeExercise(reading);
  glo.exerciseDamaged = !reading.complete || reading.damagedValues > 0;
  if (glo.exerciseDamaged)
    std::cerr
        << "quorin-matrix: " << arguments.from << (reading.complete ? " is damaged: " : " is cut short: ")
        << glo.itemCount() << " items could be read, " << reading.damagedValues
        << " values could not; the text that stood on the slide is kept there in a tag QRNMATRIXDAMAGED\n";
  if (!reading.missingFonts.empty())
    std::cerr << "quorin-matrix: not installed, Arial stands in: " << someOf(reading.missingFonts) << "\n";
  if (!saveXY())
    throw HostError(Fault::world, 0, "The exercise could not be stored in " + arguments.deck);
  workshop.presentation().Save();
  std::cout << glo.itemCount() << " items imported to slide " << arguments.slide << "\n";
}

}  // namespace qrn::cli
