// The screen of one question: its captions, the live count, the result. What is seen is a function of these
// and of `glo` (vote_model); the surface is made anew when one of them has changed and somebody looks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "charts/vote_screen/live_bars.h"
#include "charts/vote_screen/vote_layout.h"
#include "charts/vote_screen/vote_request.h"
#include "host/forms.h"
#include "host/surface.h"
#include "host/wait.h"

namespace qrn {

struct VoteLabel {
  std::string Caption;
  bool Visible = false;
};

// The count of votes on the screen. A click on it, or a key, acts as Space.
struct uctlVotesCast {
  void Initialise();
  void PlaySound(const std::string& file) const;
  // A numeric text is shown as "###,##0", any other as it stands.
  void SetVotesCastCount(const std::string& text);

  VoteLabel label;
  int voted = 0;  // the last numeric text
};

enum class VoteState { prepared, open, resultUp, done };

// A form on which a vote runs.
struct VoteForm : host::Form {
  explicit VoteForm(std::string formName);

  // Called by the vote once before each pass.
  virtual void ResetForNewVote() = 0;
  // A vote has been taken to its end and saved; the time to note the progress.
  virtual void voteHeld() {}
  // True when the form writes the outcome of a vote itself, because it leaves the result up for the
  // facilitator.
  virtual bool writesOutcome() const { return false; }

  void SetVotesCastCount(const std::string& text);
  void ShowVotesCastControl(bool on);
  void ShowAverageScore(const std::string& text, bool on);
  void ShowBars(bool on);
  void UpdateBars();  // takes the votes at hand
  void GrowBars();    // the bars that are up grow from nothing, where the system wants motion
  void ShowKeypads(const WaitingFor& waiting, bool on);
  void ShowStatus(const std::string& line);  // one plain line above the foot; "" takes it away
  void LayOutAgain();                        // after a change of the window's size or of settings
  const host::Surface& surface() const;

  VoteState state = VoteState::prepared;
  VoteLabel lbl_Risk, lbl_assessment, lbl_averageScore, lbl_status;
  std::vector<VoteLabel> lbl_Criteria;
  uctlVotesCast uctl_votesCast;
  LiveBars bars;
  std::optional<double> average;  // of the votes at hand, shown with the statistics of a result
  std::string bgndImage;          // file of the picture behind everything; the colours where there is none
  std::string txt_AssNum, txt_RiskNum;  // assessment (0-based) and item (index into risks)
  int displayedItem = -1, displayedAssessment = 0, displayedRound = -1;

 private:
  VoteNow now() const;
  bool closed() const { return state == VoteState::resultUp || state == VoteState::done; }
  void grow();  // one step of the motion

  std::optional<WaitingFor> waiting_;
  int roomAtClose_ = 0;
  double grown_ = 1;
  std::int64_t growsFrom_ = 0;  // microseconds
  host::Timer tmr_grow_;
  // The picture and what it was made from.
  mutable VoteQuestion question_;
  mutable VoteLayout layout_;
  mutable bool laidOut_ = false;
  mutable std::optional<VoteNow> drawn_;
  mutable host::Surface surface_;
};

// Shows `item` (index into glo.risks) on `assessment` (1 to 9) and sets preVoteText, voteText, options,
// startFrom and limits for it. Places come from the assessment's stored layout where it is set, else from a
// layout that fits.
void DisplayVote(int item, int assessment, int round, VoteForm& form);

// What a form shows, as a question for the picture: captions of the form, settings and stored places of
// `glo`.
VoteQuestion questionOf(const VoteForm& form);
// The room's keypads, as far as they are known.
int keypadsInRoom();
// The address at which phones may still join, while they are in use; "" when they are not.
std::string joinAddress();

}  // namespace qrn
