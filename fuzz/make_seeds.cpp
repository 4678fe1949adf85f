// Writes the seeds of all fuzz targets: make_seeds FOLDER puts them into FOLDER/<target>/. All of them are of
// this program's own making.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "core/glo.h"
#include "core/model.h"
#include "deck/journal_records.h"
#include "store/exercise_text.h"
#include "store/full_exercise.h"
#include "support/test_host.h"

namespace {

class Seeds {
 public:
  Seeds(const std::string& root, const std::string& target) : folder_(root + "/" + target) {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  std::string file(const std::string& name) const { return folder_ + "/" + name; }
  void add(const std::string& name, const std::string& bytes) const {
    std::ofstream(file(name), std::ios::binary) << bytes;
  }

 private:
  std::string folder_;
};

void makeDecks(const std::string& root) {
  const Seeds seeds(root, "deck_open_fuzz");
  const auto deck = [&](const char* name, const qrn::test::DeckOptions& options) {
    qrn::test::writeZip(seeds.file(name), qrn::test::deckParts(options));
  };
  deck("plain", {1, false, false, false, false});
  deck("strict", {1, true, true, false, false});
  deck("tagged", {2, false, false, true, true});
  deck("voted", {1, false, false, false, false});
  {
    const auto voted = qrn::deck::Deck::open(seeds.file("voted"));
    voted->Slides(1).tags().Append("QRNVOTES", "14/03/2026,09:00:12,4;5;3;-;X;,7C2\r\n");
    voted->AddTitleOnlySlide(1).tags().Add("QRNMATRIX", "<&\"text");
    voted->Save();
  }
  for (const char* left : {"voted.backup", "voted.lock"}) std::filesystem::remove(seeds.file(left));
}

// Each part whole, and with something in its middle (the second byte says how the rest is used, the next two
// where).
void makeParts(const std::string& root) {
  const Seeds seeds(root, "deck_parts_fuzz");
  const qrn::test::PartList parts = qrn::test::deckParts({2, false, false, false, true});
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string& text = parts[i].second;
    const std::size_t gap = text.find(' ', text.size() / 2), at = gap == std::string::npos ? 0 : gap;
    const std::string number(1, static_cast<char>(i)), name = "part" + std::to_string(i);
    seeds.add(name, number + std::string(3, '\0') + text);
    seeds.add(name + "-changed", number + '\x19' + static_cast<char>(at / 256) + static_cast<char>(at % 256) +
                                     " id=\"7\" xmlns:q=\"u\" ");
  }
}

std::string record(char kind, char slide, char name, char number, const std::string& value) {
  std::string bytes(1, static_cast<char>(qrn::fuzz::kKinds.find(kind)));
  return bytes + slide + name + number + static_cast<char>(value.size()) + value;
}

void makeJournals(const std::string& root) {
  const Seeds seeds(root, "deck_journal_fuzz");
  const std::string long40(40, 'l'), places("\5\1\2xy\24\1\0", 8);
  const std::string some = record('A', 0, 0, 0, "value") + record('+', 0, 0, 0, "more") +
                           record('D', 0, 0, 0, "") + record('A', 2, 1, 0, "of the presentation");
  const std::string spliced = record('A', 0, 2, 0, long40) + record('~', 0, 2, 0, places) +
                              record('~', 0, 2, 0, std::string("\0\0\3\xE2\x82\xAC", 6));
  const std::string newSlide = record('N', 3, 0, 1, "") + record('A', 3, 0, 0, "new");
  const std::string impossible = record('A', 5, 0, 0, "x") + record('A', 0, 4, 0, "x") +
                                 record('A', 0, 0, 0, std::string("\0", 1)) + record('N', 0, 0, 0, "") +
                                 record('Z', 0, 0, 0, "x") + record('!', 0, 0, 0, "payload with no shape");
  for (int choice = 0; choice < 3; ++choice) {
    const auto add = [&](const char* name, int kind, const std::string& bytes) {
      seeds.add(name + std::to_string(choice), static_cast<char>(kind + 4 * choice) + bytes);
    };
    add("own", 0, some + newSlide + spliced);
    add("foreign", 1, record('T', 0, 0, 1, "Title") + some + newSlide + spliced);
    add("saved", 0, some + record('S', 2, 0, 0, "") + spliced);
    add("impossible", 0, some + impossible);
    add("raw", 2, "QRNJRNL1");
  }
  seeds.add("changes", "\3\x10\1\x70\2\x33\x41\x72\2\x7F\1\x41\2\x13\2\x4F\3");
}

void makeExercises(const std::string& root) {
  qrn::test::TestHost world;
  const Seeds seeds(root, "exercise_text_fuzz");
  for (const int items : {0, 1, 4}) {
    qrn::initXYVote();
    qrn::test::fillExercise(qrn::glo, items);
    const std::string text = qrn::writeExercise(qrn::glo);
    seeds.add("items" + std::to_string(items), text);
    if (items == 4)
      seeds.add("cut", text.substr(0, text.size() / 2));
  }
  qrn::initXYVote();
  seeds.add("fresh", qrn::writeExercise(qrn::glo));
}

void makeVotes(const std::string& root) {
  const Seeds seeds(root, "votes_fuzz");
  const std::string live =
      "14/03/2026,09:00:12,4;5;3;-;X;,1C1\r\n14/03/2026,09:01:12,A;1;;2;,2C1\r\n"
      "14/03/2026,09:02:12,4;4;4;4;,1C12\r\n";
  seeds.add("live", live);
  seeds.add("postal", live + "|1C1;45XA-\r\n2C1;123\r\n");
  seeds.add("corrected", live + "14/03/2026,10:00:00,1;1;1;1;,1C1,0,55\r\nnot a record\r\n[SSD]1,2,3\r\n");
  seeds.add("cut", live.substr(0, live.size() - 9));
}

void makeRooms(const std::string& root) {
  const Seeds seeds(root, "fuzz_controller");
  const auto lines = [](std::initializer_list<const char*> all) {
    std::string text;
    for (const char* line : all) text += std::string(line) + '\0';
    return text;
  };
  seeds.add("vote",
            lines({"2join - 0", " voteType=0", " voteText=|Low|Middle|High|", " StartFrom=1", " Abstain=True",
                   " Clear", " StartVote", "1press 1 2", "2press 1 X", "a", " EndVote", " VotesStored"}));
  seeds.add("rank", lines({" voteType=1", " options=one|two|three", " limits=2", " StartVote", "1press 1 1|2",
                           "1press 1 2|1|3", "g", " EndVote"}));
  seeds.add("allocate", lines({" voteType=6", " options=one|two", " points=5", " allocation=8", " StartVote",
                               "1press 1 5|3", "rb", "1press 1 3|3", " BaseInfo", " GetNames"}));
  seeds.add("balance", lines({" PCAOptions=1,2,4,5,", " StartVote", "1press 1 4", " KBOARD", " KBOARD-OFF"}));
  seeds.add("announcement",
            "port=7878\ntoken=8a60a21956540db8e33b5b4a1cdda769\nprocess=7022\nrehearse=0\n"
            "seed=1\njoin=http://192.168.1.20:7878/join\n");
  seeds.add("names", "1,Ann\n2,Bert\n");
  seeds.add("base", "A:0:1-50:off");
}

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("usage: make_seeds FOLDER\n", stderr);
    return 2;
  }
  const std::string root = words[1];
  makeDecks(root);
  makeParts(root);
  makeJournals(root);
  makeExercises(root);
  makeVotes(root);
  makeRooms(root);
  return 0;
}
