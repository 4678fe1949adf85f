#include "cli/workshop.h"

#include "analysis/filter/filters.h"
#include "base/errors.h"
#include "core/glo.h"
#include "core/model.h"
#include "host/host.h"
#include "host/names.h"
#include "store/exercise_text.h"
#include "store/vote_store.h"

namespace qrn::cli {

// Moving a journal aside is writing, whatever the subcommand does afterwards.
Workshop::Workshop(const DeckArguments& deck, Access access, const CliHooks& hooks)
    : presentation_(hooks.openDeck(
          {deck.deck, access == Access::read && deck.journal != Journal::aside, deck.journal})) {
  host::host().dialogs = &dialogs_;
  glo.oPresentation = presentation_.get();
}

Workshop::~Workshop() {
  host::host().dialogs = nullptr;
  host::host().presentationProgram = nullptr;
  glo.oVoteSlide = nullptr;
  glo.oPresentation = nullptr;
  glo.oPowerPoint = nullptr;
}

host::Slide& Workshop::slide(int number) {
  const int count = presentation_->SlideCount();
  if (number < 1 || number > count)
    throw HostError(Fault::badData, 9,
                    "There is no slide " + std::to_string(number) + ": the deck has " +
                        std::to_string(count) + (count == 1 ? " slide" : " slides"));
  host::Slide& found = presentation_->Slides(number);
  if (const std::string damage = found.Damage(); !damage.empty())
    throw HostError(Fault::badData, 0, "Slide " + std::to_string(number) + " is damaged: " + damage);
  return found;
}

void Workshop::selectSlide(int number) {
  host::Slide& voteSlide = slide(number);
  program_ = std::make_unique<HeadlessProgram>(*presentation_, number);
  host::host().presentationProgram = program_.get();
  glo.oPowerPoint = program_.get();
  glo.oVoteSlide = &voteSlide;
  glo.currentSlide = number;
  glo.currentSlideID = voteSlide.slideID();
  initXYVote();
  glo.voteRecords.forget();
}

void Workshop::loadExercise(int number) {
  selectSlide(number);
  if (glo.oVoteSlide->tags().Item(tagName::exercise).empty())
    throw HostError(Fault::badData, 0, "Slide " + std::to_string(number) + " holds no exercise");
  LoadXY("");
  GetDemographicVoteInfo();
  readVoteRecords();
}

}  // namespace qrn::cli
