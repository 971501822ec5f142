#include "json/YxJsonStreamParserAdapter.h"

namespace seedmote::json {

void YxJsonStreamParserAdapter::handOver(YxJsonStreamParserBase& parser, const detail::Node& node) {
  Value value = builder_.finish(node);
  if (delegate_ == nullptr) return;
  if (node.kind() == Kind::array) {
    delegate_->foundArray(parser, std::move(value));
  } else {
    delegate_->foundObject(parser, std::move(value));
  }
}

}  // namespace seedmote::json
