// Chooses the neighbours, wires them and starts: a subcommand, the deck window, or a run from a command line
// of fields.
#include <QApplication>
#include <QRandomGenerator>
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "adapters/system/standard_streams.h"
#include "app/neighbours.h"
#include "app/workshop_desktop.h"
#include "cli/cli.h"
#include "host/errors.h"

namespace {

using qrn::app::Neighbours;

// Remarks of the toolkit on its surroundings are of no use on a terminal.
void withoutRemarks(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg)
    std::cerr << "quorin-matrix: " << message.toStdString() << "\n";
}

int runSubcommand(int& argc, char** argv, const std::vector<std::string>& words) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(withoutRemarks);
  const QGuiApplication application(argc, argv);
  Neighbours neighbours(Neighbours::Kind::windowless);
  return qrn::cli::runSubcommand(words, neighbours.cliHooks());
}

// Takes "--rehearse N" out of the words; 0 without it, -1 when N is no number of keypads.
int takeRehearsal(std::vector<std::string>& words) {
  const auto found = std::find(words.begin(), words.end(), "--rehearse");
  if (found == words.end())
    return 0;
  if (found + 1 == words.end())
    return -1;
  const int keypads = QString::fromStdString(*(found + 1)).toInt();
  words.erase(found, found + 2);
  return keypads >= 1 && keypads <= 10000 ? keypads : -1;
}

int runDesktop(int& argc, char** argv, const std::vector<std::string>& words, int rehearsal) {
  const QApplication application(argc, argv);
  Neighbours neighbours(Neighbours::Kind::desktop);
  neighbours.rehearse(rehearsal, QRandomGenerator::global()->generate());
  qrn::app::WorkshopDesktop desktop(neighbours);
  if (!words.empty() && words[0] == "--deck")
    return desktop.runFields(words[1], words[2]);
  return desktop.run(words.empty() ? "" : words[0]);
}

int usage() {
  std::cerr << "usage: quorin-matrix [--rehearse N] [DECK]\n"
               "       quorin-matrix [--rehearse N] --deck DECK FIELDS\n"
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
  try {
    if (qrn::cli::isSubcommand(words) || (words.size() == 1 && isHelp(words[0])))
      return runSubcommand(argc, argv, words);
    const int rehearsal = takeRehearsal(words);
    const bool fields = words.size() == 3 && words[0] == "--deck";
    if (rehearsal < 0 || (!fields && (words.size() > 1 || (!words.empty() && words[0].rfind('-', 0) == 0))))
      return usage();
    return runDesktop(argc, argv, words, rehearsal);
  } catch (const std::exception& error) {
    std::cerr << "quorin-matrix: " << error.what() << "\n";
    return qrn::cli::kFailed;
  }
}
