#include "store/exercise_text.h"

#include <array>
#include <cstdio>
#include <utility>

#include "analysis/filter/filters.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/item_label.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/presentation.h"
#include "host/system.h"
#include "store/exercise_text_lines.h"
#include "store/exercise_text_load_state.h"
#include "store/named_settings.h"

namespace qrn {

std::function<void()> endProgramHook;

namespace mtx {

LoadState& loadState() {
  static LoadState state;
  return state;
}

std::string installedFont(const std::string& name, bool silent) {
  constexpr const char* kFallback = "Arial";
  const host::Host& world = host::host();
  if (name == kFallback || world.textMeasure == nullptr || world.textMeasure->fontInstalled(name))
    return name;
  if (!silent && loadState().missingFonts.insert(name).second)
    world.dialogs->Info("Font " + name + " is not installed\r\nDefaulting to Arial");
  return kFallback;
}

}  // namespace mtx

namespace {

constexpr const char* kModule = "exercise_text";
constexpr const char* kTag = "qrnMatrix";
constexpr const char* kDamagedTag = "qrnMatrixDamaged";

ExerciseTextReport report;

host::Tags* voteSlideTags() {
  return glo.oVoteSlide != nullptr ? &glo.oVoteSlide->tags() : nullptr;
}

// Reading -----------------------------------------------------------------------------------------

// Both halves of the text; what the text does not hold any more stays as it was.
void readLines(std::string_view text) {
  mtx::TextReader reader(text);
  report = {};
  try {
    mtx::bodyLines(reader, static_cast<Exercise&>(glo));
    mtx::readNamedSettings(reader, glo);
  } catch (const mtx::InputPastEnd& error) {
    report.complete = false;
    reportError(error, kModule, "LoadXY");
  }
  report.damagedValues = reader.damaged();
  report.missingFonts = mtx::loadState().missingFonts;
  if (reader.damaged() > 0)
    reportError(HostError(Fault::badData, 13, std::to_string(reader.damaged()) + " values could not be read"),
                kModule, "LoadXY");
}

void applySifterDefaults(SifterSorterRecord& sifter) {
  const auto atZero = [](int& value, int standard) { value = value == 0 ? standard : value; };
  atZero(sifter.includeRatio, 50);
  atZero(sifter.maxNumberOfItemsVotedOn, 10);
  atZero(sifter.allocateMaxPointsPerItem, 5);
  atZero(sifter.allocateMaxPointsTotal, 25);
  atZero(sifter.orderCreateListFromTopXItems, 8);
}

void checkWorkshop() {
  host::Tags* tags = voteSlideTags();
  if (glo.workshopNumber <= 0 || tags == nullptr || !tags->Item("QRNVOTES").empty())
    return;
  glo.workshopNumber = 0;
  host::host().dialogs->MsgBox(
      "Warning:  Data has been cleared after Next Workshop was used,\r\nplease check active assessments",
      host::kTitle);
}

// The size of the scale fonts takes the zoom in once; the zoom is then spent.
void spendScaleZoom() {
  const auto zoom = static_cast<std::size_t>(glo.textZoom[2]);
  if (zoom < kZoomFactors.size())
    for (FontRecord& font : glo.scaleFonts) font.size *= static_cast<double>(kZoomFactors[zoom]);
  glo.textZoom[2] = 0;
}

void afterReading() {
  const mtx::LoadState& state = mtx::loadState();
  if (glo.matrixBackgroundFile.empty())
    glo.matrixBackgroundFlag = false;
  if (glo.runByAverageBarCount != glo.itemCount())
    glo.barCountAuto = false;
  if (glo.runByAverageBarCount == 0)
    glo.barCountAuto = true;
  if (state.resetCategories || !state.categoriesRead)
    mtx::resetCategories(glo);
  mtx::repairCategories(glo);
  applySifterDefaults(glo.SifterSorterSettings);
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
    risk.identifier = itemIdentifier(risk.ID);
  }
  checkWorkshop();
  spendScaleZoom();
}

// Text of the slide's tag by way of a file, as every exercise text goes. Without room for the file it goes
// straight.
std::string textOfSlide(const std::string& tag, std::string& temporaryFile) {
  std::string text = tag;
  if (text.find("\r\n") == std::string::npos)
    text = replaceAll(std::move(text), "\n", "\r\n");
  temporaryFile = joinPath(host::host().environment->Environ("temp"), "tempmatrix.mtx");
  trapErrors(kModule, "LoadXY", [&] {
    writeTextFileContents(text, temporaryFile);
    text = readTextFile(temporaryFile);
  });
  return text;
}

void tellNoExercise() {
  host::Host& world = host::host();
  world.dialogs->MsgBox("Could not find Matrix vote on slide.", host::kTitle);
  if (glo.cmdMode != "DISPLAY")
    return;
  for (const std::string& form : world.forms->loadedNames()) world.forms->unload(form);
  if (endProgramHook)
    endProgramHook();
}

// What could not be read must not go with the next save, so that keeps the text as it was beside the new one.
void tellDamage() {
  glo.exerciseDamaged = !report.complete || report.damagedValues > 0;
  if (!glo.exerciseDamaged)
    return;
  host::host().dialogs->MsgBox(
      "The exercise on this slide is damaged or cut short: " + std::to_string(glo.itemCount()) +
          " items could be read, " + std::to_string(report.damagedValues) +
          " values could not.\r\nThe next save keeps its text as it was on the slide, in the tag " +
          kDamagedTag + ".",
      host::kTitle, host::Buttons::ok, host::Icon::exclamation);
}

// Writing -----------------------------------------------------------------------------------------

std::string textToStore() {
  keepDemographicChoices();
  return writeExerciseText(glo);
}

// The text on its way to the slide: written to a file and read back from it.
std::string throughFile(const std::string& text) {
  const host::Host& world = host::host();
  const std::string folder =
      glo.matrixPath.empty() ? joinPath(world.environment->Environ("temp"), "quorin\\") : glo.matrixPath;
  const std::string file = joinPath(folder, "qrn_matrix_temp_mtx.txt");
  std::string stored = text;
  trapErrors(kModule, "saveXY", [&] {
    if (!folderExists(folder))
      world.files->makeFolder(folder);
    writeTextFileContents(text, file);
    stored = readTextFile(file);
    world.files->Kill(file);
  });
  return stored;
}

}  // namespace

bool LoadXY(const std::string& path) {
  std::string text, temporaryFile;
  if (path.empty()) {
    host::Tags* tags = voteSlideTags();
    const std::string tag = tags != nullptr ? tags->Item(kTag) : "";
    if (tag.empty()) {
      tellNoExercise();
      return false;
    }
    text = textOfSlide(tag, temporaryFile);
  }
  trapErrors(
      kModule, "LoadXY",
      [&] {
        if (!path.empty())
          text = host::host().files->read(path);
        readExerciseText(text);
      },
      true);
  if (path.empty())
    tellDamage();
  if (!temporaryFile.empty())
    trapErrors(kModule, "LoadXY", [&] { host::host().files->Kill(temporaryFile); });
  return true;
}

bool saveXY(const std::string& path) {
  return trapErrors(
      kModule, "saveXY",
      [&] {
        const std::string text = textToStore();
        if (!path.empty()) {
          writeTextFileContents(text, path);
          return;
        }
        host::Tags* tags = voteSlideTags();
        if (tags == nullptr)
          throw HostError(Fault::world, 91, "There is no slide to store the exercise in");
        const std::string stored = throughFile(text);
        // Put over the old text in one step: between taking that away and adding this, nothing would be
        // stored.
        if (stored.empty())
          return;
        if (std::exchange(glo.exerciseDamaged, false))
          tags->Add(kDamagedTag, tags->Item(kTag));
        tags->Add(kTag, stored);
        glo.exerciseAtRest = text;
      },
      true);
}

void noteExerciseAtRest() {
  glo.exerciseAtRest = textToStore();
}

bool exerciseChanged() {
  return glo.exerciseAtRest != textToStore();
}

std::string writeExerciseText(Glo& exercise) {
  constexpr std::size_t kFrame = 40000, kPerItem = 512;
  if (exercise.barCountAuto)
    exercise.runByAverageBarCount = exercise.itemCount();
  mtx::TextWriter writer;
  writer.reserve(kFrame + kPerItem * exercise.risks.size());
  mtx::bodyLines(writer, static_cast<Exercise&>(exercise));
  mtx::writeNamedSettings(writer, exercise);
  return writer.release();
}

bool readExerciseText(const std::string& text) {
  if (trimBlanks(text).empty())
    return false;
  mtx::loadState() = mtx::LoadState{};
  mtx::loadState().wizard = glo.cmdFile == "WIZARD";
  const std::string utf8 = toUtf8(text);
  readLines(utf8);
  afterReading();
  return true;
}

const ExerciseTextReport& lastExerciseTextReport() {
  return report;
}

bool looksLikeExerciseText(const std::string& text) {
  const std::string utf8 = toUtf8(text);
  mtx::TextReader reader(utf8);
  std::string first;
  std::array<float, 8> numbers{};
  try {
    if (!reader.nextIsQuoted())
      return false;
    reader.take(mtx::T(first));
    for (float& number : numbers) reader.take(mtx::S<float>(number));
    return reader.count().has_value() && reader.damaged() == 0;
  } catch (const mtx::InputPastEnd&) {
    return false;
  }
}

std::string newExerciseName() {
  const host::DateTime now = host::host().clock->now();
  std::array<char, 64> name{};
  std::snprintf(name.data(), name.size(), "New-%04d-%02d-%02d-%02d%02d.mtx", now.year, now.month, now.day,
                now.hour, now.minute);
  return name.data();
}

}  // namespace qrn
