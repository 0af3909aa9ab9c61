#include "training/transcript_groups.h"

#include <map>
#include <set>

#include "training/shared_sequence.h"

namespace velto {
namespace {

constexpr std::string_view kSharedSequence = "shared sequence";

bool noGroupHasTwo(const std::vector<Transcript*>& transcripts) {
  std::set<std::string_view> groups;
  for (const Transcript* t : transcripts) {
    if (!groups.insert(t->group).second) return false;
  }
  return true;
}

void groupBySequence(const std::vector<Transcript*>& transcripts) {
  const std::vector<std::size_t> groups =
      sharedSequenceGroups({transcripts.begin(), transcripts.end()});
  for (std::size_t i = 0; i < groups.size(); ++i) {
    // The number cannot be another group's name: names hold no blank.
    transcripts[i]->group = "sequence " + std::to_string(groups[i] + 1);
    transcripts[i]->groupWord = kSharedSequence;
  }
}

std::string described(const std::vector<Transcript*>& transcripts) {
  struct Word {
    long transcripts = 0;
    std::set<std::string_view> groups;
  };
  std::map<std::string_view, Word> words;
  for (const Transcript* t : transcripts) {
    Word& word = words[t->groupWord];
    ++word.transcripts;
    word.groups.insert(t->group);
  }
  std::string text = "held-back parts keep groups together: ";
  for (const auto& [name, word] : words) {
    if (&word != &words.begin()->second) text += ", ";
    text += name == kSharedSequence ? std::string("by shared sequence (no header word joins any) ")
                                    : "by the header word '" + std::string(name) + "' ";
    text += std::to_string(word.groups.size()) + " groups of " + std::to_string(word.transcripts) +
            " transcripts";
  }
  return text;
}

}  // namespace

std::string groupTranscripts(std::vector<Transcript>& coding, std::vector<Transcript>& noncoding) {
  std::vector<Transcript*> all;
  for (Transcript& t : coding) all.push_back(&t);
  for (Transcript& t : noncoding) all.push_back(&t);
  std::vector<Transcript*> unnamed;
  const bool none = noGroupHasTwo(all);
  for (Transcript* t : all) {
    if (none || t->groupWord.empty()) unnamed.push_back(t);
  }
  if (!unnamed.empty()) groupBySequence(unnamed);
  return described(all);
}

std::string duplicatesText(const std::vector<Transcript>& coding,
                           const std::vector<Transcript>& noncoding) {
  std::map<std::vector<short>, const Transcript*> firsts;
  long repeats = 0;
  std::string example;
  for (const std::vector<Transcript>* set : {&coding, &noncoding}) {
    for (const Transcript& t : *set) {
      const auto [first, isNew] = firsts.emplace(t.bases, &t);
      if (isNew) continue;
      if (++repeats == 1) example = first->second->name + " and " + t.name;
    }
  }
  if (repeats == 0) return "";
  return std::to_string(repeats) +
         " transcripts have the sequence of an earlier one, for example " + example;
}

}  // namespace velto
