#include "json/YxJsonStreamWriterState.h"

namespace seedmote::json {

constexpr YxJsonStreamWriterStateStart::YxJsonStreamWriterStateStart()
    : YxJsonStreamWriterState({.next = &YxJsonStreamWriterStateComplete::sharedInstance()}) {}

constexpr YxJsonStreamWriterStateComplete::YxJsonStreamWriterStateComplete()
    : YxJsonStreamWriterState({.invalid = true}) {}

constexpr YxJsonStreamWriterStateError::YxJsonStreamWriterStateError() : YxJsonStreamWriterState({}) {}

constexpr YxJsonStreamWriterStateObjectStart::YxJsonStreamWriterStateObjectStart(char separator)
    : YxJsonStreamWriterState({.expectsKey = true,
                               .separator = separator,
                               .next = &YxJsonStreamWriterStateObjectValue::sharedInstance()}) {}

constexpr YxJsonStreamWriterStateObjectKey::YxJsonStreamWriterStateObjectKey()
    : YxJsonStreamWriterStateObjectStart(',') {}

constexpr YxJsonStreamWriterStateObjectValue::YxJsonStreamWriterStateObjectValue()
    : YxJsonStreamWriterState(
          {.separator = ':', .oneBlank = true, .next = &YxJsonStreamWriterStateObjectKey::sharedInstance()}) {
}

constexpr YxJsonStreamWriterStateArrayStart::YxJsonStreamWriterStateArrayStart()
    : YxJsonStreamWriterState({.next = &YxJsonStreamWriterStateArrayValue::sharedInstance()}) {}

constexpr YxJsonStreamWriterStateArrayValue::YxJsonStreamWriterStateArrayValue()
    : YxJsonStreamWriterState({.separator = ','}) {}

constinit const YxJsonStreamWriterStateStart YxJsonStreamWriterStateStart::instance_;
constinit const YxJsonStreamWriterStateComplete YxJsonStreamWriterStateComplete::instance_;
constinit const YxJsonStreamWriterStateError YxJsonStreamWriterStateError::instance_;
constinit const YxJsonStreamWriterStateObjectStart YxJsonStreamWriterStateObjectStart::instance_;
constinit const YxJsonStreamWriterStateObjectKey YxJsonStreamWriterStateObjectKey::instance_;
constinit const YxJsonStreamWriterStateObjectValue YxJsonStreamWriterStateObjectValue::instance_;
constinit const YxJsonStreamWriterStateArrayStart YxJsonStreamWriterStateArrayStart::instance_;
constinit const YxJsonStreamWriterStateArrayValue YxJsonStreamWriterStateArrayValue::instance_;

}  // namespace seedmote::json
