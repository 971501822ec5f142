#include "client/AddOutcome.h"

namespace seedmote {

AddOutcome AddOutcome::of(const RVSOAPResult& last, bool wasSentAgain) {
  AddOutcome outcome;
  outcome.statuscode = last.statuscode;
  outcome.outcome = last.outcome;
  outcome.wasSentAgain = wasSentAgain;
  if (outcome.statuscode != "200") {
    return outcome;
  }
  const json::Value answer = last.getResponseDict();
  if (const auto result = answer["result"].text()) {
    outcome.result = std::string(*result);
  }
  outcome.duplicate = !answer["arguments"]["torrent-duplicate"].isAbsent();
  return outcome;
}

}  // namespace seedmote
