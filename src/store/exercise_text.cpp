#include "store/exercise_text.h"

#include <array>
#include <cstdio>
#include <utility>

#include "analysis/filter/filters.h"
#include "base/text.h"
#include "base/utf8.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "core/layout.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/system.h"
#include "store/exercise_text_lines.h"
#include "store/named_settings.h"

namespace qrn {

namespace mtx {

std::string installedFont(ExerciseReader& a, const std::string& name, bool silent) {
  constexpr const char* kFallback = "Arial";
  const host::TextMeasure* measure = host::host().textMeasure;
  if (name == kFallback || measure == nullptr || measure->fontInstalled(name))
    return name;
  if (!silent)
    a.missingFonts.insert(name);
  return kFallback;
}

}  // namespace mtx

namespace {

constexpr const char* kModule = "exercise_text";

host::Tags* voteSlideTags() {
  return glo.oVoteSlide != nullptr ? &glo.oVoteSlide->tags() : nullptr;
}

// Reading -----------------------------------------------------------------------------------------

void applySifterDefaults(SifterSorterRecord& sifter) {
  const auto atZero = [](int& value, int standard) { value = value == 0 ? standard : value; };
  atZero(sifter.includeRatio, 50);
  atZero(sifter.maxNumberOfItemsVotedOn, 10);
  atZero(sifter.allocateMaxPointsPerItem, 5);
  atZero(sifter.allocateMaxPointsTotal, 25);
  atZero(sifter.orderCreateListFromTopXItems, 8);
}

// The size of the scale fonts takes the zoom in once; the zoom is then spent.
void spendScaleZoom(Exercise& x) {
  const auto zoom = static_cast<std::size_t>(x.textZoom[2]);
  if (zoom < kZoomFactors.size())
    for (FontRecord& font : x.scaleFonts) font.size *= static_cast<double>(kZoomFactors[zoom]);
  x.textZoom[2] = 0;
}

void finish(const mtx::ExerciseReader& reader, Exercise& x) {
  if (x.matrixBackgroundFile.empty())
    x.matrixBackgroundFlag = false;
  if (x.runByAverageBarCount != x.itemCount())
    x.barCountAuto = false;
  if (x.runByAverageBarCount == 0)
    x.barCountAuto = true;
  if (reader.resetCategories || !reader.categoriesRead)
    mtx::resetCategories(x);
  mtx::repairCategories(x);
  applySifterDefaults(x.SifterSorterSettings);
  mtx::eachItem(x, [](RiskRecord& risk) { risk.identifier = itemIdentifier(risk.ID); });
  spendScaleZoom(x);
}

void logDamage(const ExerciseReading& reading) {
  if (!reading.complete)
    reportError(mtx::InputPastEnd(), kModule, "LoadXY");
  if (reading.damagedValues > 0)
    reportError(
        HostError(Fault::badData, 13, std::to_string(reading.damagedValues) + " values could not be read"),
        kModule, "LoadXY");
}

void checkWorkshop() {
  host::Tags* tags = voteSlideTags();
  if (glo.workshopNumber <= 0 || tags == nullptr || !tags->Item(tagName::votes).empty())
    return;
  glo.workshopNumber = 0;
  host::host().dialogs->MsgBox(
      "Warning:  Data has been cleared after Next Workshop was used,\r\nplease check active assessments",
      host::kTitle);
}

// What the text does not say stands as in the run, on the screen of now.
ExerciseReading readForRun(const std::string& text) {
  Exercise base = glo;
  fitLayout(base, GetScreenDimensions());
  return readExercise(text, std::move(base), glo.cmdFile == runMode::wizard ? ReadFor::wizard : ReadFor::run);
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
  if (glo.cmdMode != runMode::display)
    return;
  for (const std::string& form : world.forms->loadedNames()) world.forms->unload(form);
  host::endRun();
}

// What could not be read must not go with the next save, so that keeps the text as it was beside the new one.
void tellDamage(const ExerciseReading& reading) {
  glo.exerciseDamaged = !reading.complete || reading.damagedValues > 0;
  if (!glo.exerciseDamaged)
    return exerciseHistory().stored();
  host::host().dialogs->MsgBox(
      "The exercise on this slide is damaged or cut short: " + std::to_string(reading.exercise.itemCount()) +
          " items could be read, " + std::to_string(reading.damagedValues) +
          " values could not.\r\nThe next save keeps its text as it was on the slide, in the tag " +
          tagName::damagedExercise + ".",
      host::kTitle, host::Buttons::ok, host::Icon::exclamation);
}

// Writing -----------------------------------------------------------------------------------------

// In the exercise itself, double quotes become single ones where the format cannot hold them, and the bar
// count follows the list.
std::string writeInPlace(Exercise& x) {
  constexpr std::size_t kFrame = 40000, kPerItem = 512;
  if (x.barCountAuto)
    x.runByAverageBarCount = x.itemCount();
  mtx::TextWriter writer;
  writer.reserve(kFrame + kPerItem * x.risks.size());
  mtx::bodyLines(writer, x);
  mtx::writeNamedSettings(writer, x);
  return writer.release();
}

std::string textToStore() {
  keepDemographicChoices();
  return writeInPlace(glo);
}

// Beside what was kept there before.
void keepDamaged(host::Tags& tags, const std::string& text) {
  std::string tag = tagName::damagedExercise;
  for (int number = 2; !tags.Item(tag).empty() && tags.Item(tag) != text; ++number)
    tag = tagName::damagedExercise + std::to_string(number);
  if (!text.empty())
    tags.Add(tag, text);
}

// The text on its way to the slide: written to a file and read back from it.
std::string throughFile(const std::string& text) {
  const host::Host& world = host::host();
  const std::string folder =
      glo.matrixPath.empty() ? joinPath(world.environment->Environ("temp"), "quorin\\") : glo.matrixPath;
  const std::string file = joinPath(folder, "qrn_matrix_temp_mtx.txt");
  std::string stored = text;
  trapErrors(kModule, "saveXY", [&] {
    world.files->makeFolder(folder);
    writeTextFileContents(text, file);
    stored = readTextFile(file);
    world.files->Kill(file);
  });
  return stored;
}

}  // namespace

ExerciseReading readExercise(const std::string& text, Exercise base, ReadFor purpose) {
  ExerciseReading reading{std::move(base), !trimBlanks(text).empty(), false, 0, {}, {}};
  if (!reading.complete)
    return reading;
  const std::string utf8 = toUtf8(text);
  mtx::ExerciseReader reader(utf8, purpose == ReadFor::wizard);
  try {
    mtx::bodyLines(reader, reading.exercise);
    mtx::readNamedSettings(reader, reading.exercise);
    reading.complete = !reader.cutShort();
  } catch (const mtx::InputPastEnd&) {
    reading.complete = false;
  }
  reading.itemsWhole = reader.itemsWhole;
  finish(reader, reading.exercise);
  reading.damagedValues = reader.damaged();
  reading.missingFonts = std::move(reader.missingFonts);
  reading.messages = std::move(reader.messages);
  return reading;
}

std::string writeExercise(Exercise exercise) {
  return writeInPlace(exercise);
}

void takeExercise(const ExerciseReading& reading) {
  host::Dialogs& dialogs = *host::host().dialogs;
  for (const std::string& name : reading.missingFonts)
    dialogs.Info("Font " + name + " is not installed\r\nDefaulting to Arial");
  for (const std::string& message : reading.messages)
    dialogs.MsgBox(message, host::kTitle, host::Buttons::ok, host::Icon::information);
  logDamage(reading);
  static_cast<Exercise&>(glo) = reading.exercise;
  exerciseHistory().begin(false);
  checkWorkshop();
}

bool LoadXY(const std::string& path) {
  std::string text, temporaryFile;
  if (path.empty()) {
    host::Tags* tags = voteSlideTags();
    const std::string tag = tags != nullptr ? tags->Item(tagName::exercise) : "";
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
        const ExerciseReading reading = readForRun(text);
        takeExercise(reading);
        if (path.empty())
          tellDamage(reading);
      },
      true);
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
          keepDamaged(*tags, tags->Item(tagName::exercise));
        tags->Add(tagName::exercise, stored);
        exerciseHistory().stored();
      },
      true);
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
