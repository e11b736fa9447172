#include "project/TransferRecord.h"

#include "project/data/Schema.h"

namespace velmoor {
namespace {

using schema::Misc;

constexpr std::string_view kSent = "sent ";
constexpr std::string_view kRead = "read ";
constexpr std::string_view kMomentForm = "0000-00-00 00:00:00";

std::string KeyOf(Tool tool) {
  return std::string(Misc::kTransfer) + std::string(InfoOf(tool).word);
}

bool IsMoment(std::string_view text) {
  if (text.size() != kMomentForm.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool digit = text[i] >= '0' && text[i] <= '9';
    if (kMomentForm[i] == '0' ? !digit : text[i] != kMomentForm[i]) return false;
  }
  return true;
}

}  // namespace

std::optional<LastTransfer> TransferIn(Database& database, Tool tool) {
  const auto records = database.OpenTable(Misc::kTable);
  if (!records->FindFirst(Misc::kPropertyName, KeyOf(tool))) return std::nullopt;
  const std::string text = records->Text(Misc::kValue);
  const bool sent = text.starts_with(kSent);
  if (!sent && !text.starts_with(kRead)) return std::nullopt;
  std::string moment = text.substr(kSent.size());
  if (!IsMoment(moment)) return std::nullopt;
  return LastTransfer{sent, std::move(moment)};
}

bool PutTransfer(Database& database, Tool tool, const LastTransfer& transfer) {
  const std::string text = std::string(transfer.sent ? kSent : kRead) + transfer.moment;
  const auto records = database.OpenTable(Misc::kTable);
  const std::string key = KeyOf(tool);
  if (records->FindFirst(Misc::kPropertyName, key)) {
    if (records->Text(Misc::kValue) == text) return false;
    records->Edit();
  } else {
    records->AddNew();
    records->Set(Misc::kPropertyName, key);
  }
  records->Set(Misc::kValue, text);
  records->Update();
  return true;
}

}  // namespace velmoor
