// quorin-controller: owns the keypads and speaks with the program.
#include <sys/resource.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "controller/room/arguments.h"
#include "controller/server/server.h"

namespace qrn::controller {
namespace {

constexpr int usualPort = 7878;

struct Arguments {
  ServerOptions server;
  int port = -1, preferredPort = usualPort;
  std::string bind, keypads, names;
  std::vector<std::string> bases;
  int grace = 30, patience = 15, silence = 40;
  int closePercent = -1;
};

void describe(CLI::App& app, Arguments& a) {
  ServerOptions& server = a.server;
  app.add_option("--port", a.port, "Port of page and sockets; 0 any free one")->check(CLI::Range(0, 65535));
  app.add_option(
         "--prefer-port", a.preferredPort,
         "Without --port: the port to take when it is free, else any (" + std::to_string(usualPort) + ")")
      ->check(CLI::Range(0, 65535));
  app.add_option("--bind", a.bind, "Address to listen on. Without it every address of this machine");
  app.add_option("--address", server.address,
                 "Host name or address to show to the phones. Without it the likeliest of this machine's")
      ->envname("QUORIN_ADDRESS");
  app.add_option("--rehearse", server.room.rehearse, "This many keypads vote by themselves")
      ->check(CLI::Range(0, 9999));
  app.add_option("--seed", server.room.seed, "Of the rehearsal keypads: the same seed, the same votes");
  app.add_flag("--hurry", server.room.hurry, "Rehearsal keypads press at once");
  app.add_option("--keypads", a.keypads,
                 "Keypad numbers of the room, LO-HI. Without it 1-650, or just the "
                 "rehearsal keypads");
  app.add_option("--bases", a.bases, "Base stations, BASE:OFFSET:FIRST-LAST, \":off\" behind one not in use");
  app.add_option("--close-percent", a.closePercent,
                 "Votes close by themselves at this share of the keypads; 0 "
                 "never. Without it 100 for rehearsal keypads, else 0")
      ->check(CLI::Range(0, 100));
  app.add_option("--names", a.names, "File of lines \"number,name\"");
  app.add_option("--announce", server.announce,
                 "File that says where this controller is and holds the token of "
                 "the program's side; - the standard output");
  app.add_option("--state", server.state, "File that keeps the keypad numbers of the phones");
  app.add_option("--max-clients", server.maxClients, "Most connections at a time");
  app.add_flag("--end-with-link", server.endWithLink, "End when there has been no program for a time");
  app.add_option("--grace", a.grace, "That time, in seconds")->check(CLI::Range(0, 86400));
  app.add_option("--patience", a.patience, "Seconds that a request may take")->check(CLI::Range(1, 86400));
  app.add_option("--silence", a.silence, "Seconds until a phone that does not answer is gone")
      ->check(CLI::Range(1, 86400));
}

std::string readWhole(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file)
    throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void completeRoom(const Arguments& a, RoomOptions& room) {
  for (const std::string& text : a.bases) {
    const auto base = readBase(text);
    if (!base)
      throw std::runtime_error("--bases takes BASE:OFFSET:FIRST-LAST, not " + text);
    room.bases.push_back(*base);
    room.highest = std::max(room.bases.size() == 1 ? 0 : room.highest, base->last + base->offset);
  }
  if (!a.keypads.empty()) {
    const auto range = readRange(a.keypads);
    if (!range)
      throw std::runtime_error("--keypads takes LO-HI, not " + a.keypads);
    std::tie(room.lowest, room.highest) = *range;
  } else if (room.bases.empty() && room.rehearse > 0) {
    room.highest = room.rehearse;
  }
  if (room.rehearse > room.highest - room.lowest + 1)
    throw std::runtime_error("there are fewer keypads than are to rehearse");
  room.closePercent = a.closePercent >= 0 ? a.closePercent : room.rehearse > 0 ? 100 : 0;
  if (!a.names.empty())
    room.names = readNames(readWhole(a.names));
}

void complete(Arguments& a) {
  ServerOptions& server = a.server;
  completeRoom(a, server.room);
  server.port = a.port >= 0 ? a.port : a.preferredPort;
  server.portOrAny = a.port < 0;
  if (!a.bind.empty())
    server.bind = a.bind;
  server.grace = std::chrono::seconds(a.grace);
  server.patience = std::chrono::seconds(a.patience);
  server.silence = std::chrono::seconds(a.silence);
  const char* given = std::getenv(link::tokenVariable);
  server.token = given != nullptr && link::isToken(given) ? given : link::randomToken();
  unsetenv(link::tokenVariable);
}

// Every phone is a descriptor.
void raiseDescriptorLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
    return;
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

int run(int argc, char** argv) {
  CLI::App app("Owns the keypads of a workshop: phones in a browser and keypads that rehearse.",
               "quorin-controller");
  Arguments arguments;
  describe(app, arguments);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  }
  try {
    complete(arguments);
    raiseDescriptorLimit();
    Server server(arguments.server);
    server.logPlace();
    server.run();
  } catch (const std::exception& error) {
    std::cerr << "quorin-controller: " << error.what() << "\n";
    return 1;
  }
  return 0;
}

}  // namespace
}  // namespace qrn::controller

int main(int argc, char** argv) {
  return qrn::controller::run(argc, argv);
}
