// tags: the texts stored in the deck, as they are.
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "base/errors.h"
#include "cli/commands.h"
#include "cli/workshop.h"
#include "host/host.h"
#include "host/system.h"

namespace qrn::cli {

namespace {

std::string readValue(const std::string& from) {
  if (from == "-")
    return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  return host::host().files->read(from);
}

void listTags(host::Tags& tags) {
  for (const std::string& name : tags.Names())
    std::cout << name << "\t" << tags.Item(name).size() << " bytes\n";
}

}  // namespace

void runTags(const TagsArguments& arguments, const CliHooks& hooks) {
  const bool writes = arguments.set.has_value() || arguments.remove.has_value();
  Workshop workshop(arguments, writes ? Access::write : Access::read, hooks);
  host::Tags& tags =
      arguments.slide > 0 ? workshop.slide(arguments.slide).tags() : workshop.presentation().tags();
  if (arguments.get) {
    std::cout << tags.Item(*arguments.get);
  } else if (arguments.set) {
    tags.Add(*arguments.set, readValue(arguments.from));
    workshop.presentation().Save();
  } else if (arguments.remove) {
    tags.Delete(*arguments.remove);
    workshop.presentation().Save();
  } else {
    listTags(tags);
  }
}

}  // namespace qrn::cli
