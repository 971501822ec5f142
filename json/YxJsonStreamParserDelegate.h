#pragma once

#include <string_view>

#include "json/YxJsonNumber.h"

namespace seedmote::json {

class YxJsonStreamParserBase;

// Hears of everything that a stream parser finds, in the order of the text. Texts are borrowed for the call.
class YxJsonStreamParserDelegate {
 public:
  virtual ~YxJsonStreamParserDelegate() = default;
  virtual void parserFoundObjectStart(YxJsonStreamParserBase& parser) = 0;
  virtual void foundObjectKey(YxJsonStreamParserBase& parser, std::string_view key) = 0;
  virtual void parserFoundObjectEnd(YxJsonStreamParserBase& parser) = 0;
  virtual void parserFoundArrayStart(YxJsonStreamParserBase& parser) = 0;
  virtual void parserFoundArrayEnd(YxJsonStreamParserBase& parser) = 0;
  virtual void foundBoolean(YxJsonStreamParserBase& parser, bool value) = 0;
  virtual void parserFoundNull(YxJsonStreamParserBase& parser) = 0;
  virtual void foundNumber(YxJsonStreamParserBase& parser, const YxJsonNumber& number) = 0;
  virtual void foundString(YxJsonStreamParserBase& parser, std::string_view text) = 0;
};

}  // namespace seedmote::json
