#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "json/TreeBuilder.h"
#include "json/YxJsonStreamParserDelegate.h"

namespace seedmote::json {

// Gets the finished top-level values of an adapter.
class YxJsonStreamParserAdapterDelegate {
 public:
  virtual ~YxJsonStreamParserAdapterDelegate() = default;
  virtual void foundArray(YxJsonStreamParserBase& parser, Value array) = 0;
  // Anything but an array: a dictionary, and with levelsToSkip also a scalar.
  virtual void foundObject(YxJsonStreamParserBase& parser, Value object) = 0;
};

// Builds values from a stream parser's events: the top layer of the reader. A template's delegate, so that
// the events are plain calls.
class YxJsonStreamParserAdapter final {
 public:
  YxJsonStreamParserAdapterDelegate* delegate() const { return delegate_; }
  void setDelegate(YxJsonStreamParserAdapterDelegate* delegate) { delegate_ = delegate; }  // not owned

  // How many of the outermost containers are not built: with 1, each element of the outermost container is
  // handed over by itself. To be set between documents.
  std::size_t levelsToSkip() const { return levelsToSkip_; }
  void setLevelsToSkip(std::size_t levels) { levelsToSkip_ = levels; }

  // About how many bytes of text will come; only sizes memory.
  void expectText(std::size_t bytes) { builder_.expect(bytes + bytes / 2 + 256); }
  // About how much memory the tree under construction takes.
  std::size_t treeBytes() const { return builder_.bytes(); }

  void parserFoundObjectStart(YxJsonStreamParserBase&) {
    if (++depth_ > levelsToSkip_) builder_.openDictionary();
  }
  void parserFoundArrayStart(YxJsonStreamParserBase&) {
    if (++depth_ > levelsToSkip_) builder_.openArray();
  }
  const char* predictObjectKey(YxJsonStreamParserBase&, const char* at, const char* end) {
    return builder_.takePredictedKey(at, end);
  }
  void foundObjectKey(YxJsonStreamParserBase&, std::string_view key) {
    // The keys of containers that are skipped go to nobody.
    if (builder_.isOpen()) builder_.addKey(key);
  }
  void parserFoundObjectEnd(YxJsonStreamParserBase& parser) {
    if (depth_-- > levelsToSkip_ && builder_.isOpen()) found(parser, builder_.closeDictionary());
  }
  void parserFoundArrayEnd(YxJsonStreamParserBase& parser) {
    if (depth_-- > levelsToSkip_ && builder_.isOpen()) found(parser, builder_.closeArray());
  }
  void foundBoolean(YxJsonStreamParserBase& parser, bool value) {
    found(parser, detail::Node::withBits(Kind::boolean, value ? 1 : 0));
  }
  void parserFoundNull(YxJsonStreamParserBase& parser) { found(parser, detail::Node::plain(Kind::null)); }
  void foundNumber(YxJsonStreamParserBase& parser, const YxJsonNumber& number) {
    found(parser, builder_.numberNode(number));
  }
  void foundString(YxJsonStreamParserBase& parser, std::string_view text) {
    found(parser, builder_.textNode(text));
  }

 private:
  void found(YxJsonStreamParserBase& parser, const detail::Node& node) {
    if (builder_.isOpen()) [[likely]] {
      builder_.add(node);
    } else {
      handOver(parser, node);
    }
  }
  void handOver(YxJsonStreamParserBase& parser, const detail::Node& node);

  YxJsonStreamParserAdapterDelegate* delegate_ = nullptr;
  std::size_t levelsToSkip_ = 0;
  std::size_t depth_ = 0;
  detail::TreeBuilder builder_;
};

}  // namespace seedmote::json
