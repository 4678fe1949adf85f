// Chooses the neighbours, wires them and starts: a subcommand, the deck window, or a run from a command line
// of fields.
#include <QApplication>
#include <QRandomGenerator>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "adapters/system/standard_streams.h"
#include "app/neighbours.h"
#include "app/workshop_desktop.h"
#include "base/disk.h"
#include "base/errors.h"
#include "cli/cli.h"

namespace {

using qrn::app::Neighbours;

// The deck to show while the toolkit of the windows comes up.
const std::string* deckToShow = nullptr;

// All that the toolkit cannot start without. It would abort.
[[noreturn]] void endWithoutDisplay() {
  const bool mistyped = !deckToShow->empty() && !qrn::exists(*deckToShow);
  if (mistyped)
    std::cerr << "quorin-matrix: " << *deckToShow
              << " is neither a subcommand nor a deck (--help tells more)\n";
  else
    std::cerr << "quorin-matrix: There is no display to show the windows on\n";
  std::_Exit(mistyped ? qrn::cli::kWrongUsage : qrn::cli::kFailed);
}

// Remarks of the toolkit on its surroundings are of no use on a terminal.
void withoutRemarks(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtFatalMsg && deckToShow != nullptr)
    endWithoutDisplay();
  if (type == QtCriticalMsg || type == QtFatalMsg)
    std::cerr << "quorin-matrix: " << message.toStdString() << "\n";
}

int runSubcommand(int& argc, char** argv, const std::vector<std::string>& words) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  Neighbours neighbours(Neighbours::Kind::windowless);
  return qrn::cli::runSubcommand(words, neighbours.cliHooks());
}

// Takes "OPTION VALUE" out of the words: the value, "" where it is left out, nothing without the option.
std::optional<std::string> takeOption(std::vector<std::string>& words, const char* option) {
  const auto found = std::find(words.begin(), words.end(), option);
  if (found == words.end())
    return std::nullopt;
  const bool valued = found + 1 != words.end();
  const std::string value = valued ? *(found + 1) : "";
  words.erase(found, found + (valued ? 2 : 1));
  return value;
}

// Number of rehearsal keypads; -1 when the value is none.
int keypadsOf(const std::string& value) {
  const int keypads = QString::fromStdString(value).toInt();
  return keypads >= 1 && keypads <= 10000 ? keypads : -1;
}

int runDesktop(int& argc, char** argv, const std::vector<std::string>& words, int rehearsal,
               const std::string& address) {
  const bool fields = !words.empty() && words[0] == "--deck";
  const std::string deck = words.empty() ? "" : words[fields ? 1 : 0];
  deckToShow = &deck;
  const QApplication application(argc, argv);
  deckToShow = nullptr;
  Neighbours neighbours(Neighbours::Kind::desktop);
  neighbours.rehearse(rehearsal, QRandomGenerator::global()->generate());
  neighbours.setAddress(address);
  qrn::app::WorkshopDesktop desktop(neighbours);
  return fields ? desktop.runFields(deck, words[2]) : desktop.run(deck);
}

int usage() {
  std::cerr << "usage: quorin-matrix [--rehearse N] [--address HOST] [DECK]\n"
               "       quorin-matrix [--rehearse N] [--address HOST] --deck DECK FIELDS\n"
               "       quorin-matrix info|mtx|tags|vote|results|graph ... (--help tells more)\n";
  return qrn::cli::kWrongUsage;
}

bool isHelp(const std::string& word) {
  return word == "--help" || word == "-h";
}

}  // namespace

int main(int argc, char** argv) {
  qrn::system::secureStandardStreams();
  std::vector<std::string> words(argv + 1, argv + argc);
  qInstallMessageHandler(withoutRemarks);
  try {
    if (qrn::cli::isSubcommand(words) || (words.size() == 1 && isHelp(words[0])))
      return runSubcommand(argc, argv, words);
    const auto rehearsed = takeOption(words, "--rehearse"), address = takeOption(words, "--address");
    const int rehearsal = rehearsed ? keypadsOf(*rehearsed) : 0;
    const bool fields = words.size() == 3 && words[0] == "--deck";
    if (rehearsal < 0 || (address && address->empty()) ||
        (!fields && (words.size() > 1 || (!words.empty() && words[0].rfind('-', 0) == 0))))
      return usage();
    return runDesktop(argc, argv, words, rehearsal, address.value_or(""));
  } catch (const std::exception& error) {
    std::cerr << "quorin-matrix: " << error.what() << "\n";
    return qrn::cli::kFailed;
  }
}
