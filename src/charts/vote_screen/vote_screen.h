// The screen of one question: its labels, the live count, the result bars, and the surface that shows them.
//
// DisplayVote fills the model and builds the surface once. What changes while the vote runs (the count, the
// bars, the statistics, who is waited for, the status line) is set on elements that are already there.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "charts/look/graph_look.h"
#include "charts/vote_screen/live_bars.h"
#include "charts/vote_screen/vote_screen_layout.h"
#include "host/forms.h"
#include "host/surface.h"

namespace qrn {

struct VoteLabel {
  std::string Caption;
  bool Visible = false;
  double Left = 0, Top = 0, Width = 0, Height = 0;  // twips
  host::SurfaceFont Font;
  std::int32_t ForeColor = 0;
  host::Align Alignment = host::Align::left;
};

// The count of votes on the screen. A click on it, or a key, acts as Space.
struct uctlVotesCast {
  void Initialise();
  void PlaySound(const std::string& file) const;
  // A numeric text is shown as "###,##0", any other as it stands.
  void SetVotesCastCount(const std::string& text);

  VoteLabel label;
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
  void ShowBars(bool on);  // visibility only
  void UpdateBars();       // takes the votes at hand; nothing changes when the counts are the same
  void ShowKeypads(const std::string& title, const std::string& text, bool on);
  void ShowStatus(const std::string& line);  // one plain line at the foot; "" takes it away
  void LayOutAgain();                        // after a change of the window's size
  const host::Surface& surface() const { return surface_; }
  host::Surface& surface() { return surface_; }

  VoteState state = VoteState::prepared;
  VoteLabel lbl_Risk, lbl_assessment, lbl_averageScore, lbl_status, lbl_kpadsTitle, lbl_kpads;
  std::vector<VoteLabel> lbl_Criteria;
  uctlVotesCast uctl_votesCast;
  LiveBars bars;
  std::string bgndImage;  // file of the picture behind everything, "" when the colours are painted
  std::string txt_AssNum, txt_RiskNum;  // assessment (0-based) and item (index into risks)
  int displayedItem = -1, displayedAssessment = 0, displayedRound = -1;

 private:
  friend struct VoteScreenBuilder;
  void setElement(const char* array, int index, const VoteLabel& label);
  void showElements(const std::string& array, bool on);
  void fitCount();

  host::Surface surface_;
  GraphLook look_;
  ScreenPlaces places_;
  host::SurfaceFont markFont_;
  double barSpan_ = 0;  // twips of the longest bar
};

// Shows `item` (index into glo.risks) on `assessment` (1 to 9) and sets preVoteText, voteText, options,
// startFrom and limits for it. Places come from the assessment's stored layout where it is set, else from a
// layout that fits.
void DisplayVote(int item, int assessment, int round, VoteForm& form);

}  // namespace qrn
