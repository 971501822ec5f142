#pragma once

namespace seedmote::json {

class YxJsonStreamWriter;

// Where a writer stands between two events: what goes before the next one, and what may come. Every
// concrete state is one shared constant.
class YxJsonStreamWriterState {
 public:
  YxJsonStreamWriterState(const YxJsonStreamWriterState&) = delete;
  YxJsonStreamWriterState& operator=(const YxJsonStreamWriterState&) = delete;

  // True, with the writer's error set, when nothing may be written any more.
  inline bool isInvalidState(YxJsonStreamWriter& writer) const;
  inline void appendSeparator(YxJsonStreamWriter& writer) const;
  // True, with the writer's error set, when only a key may come.
  inline bool expectingKey(YxJsonStreamWriter& writer) const;
  inline void transitionState(YxJsonStreamWriter& writer) const;
  inline void appendWhitespace(YxJsonStreamWriter& writer) const;

 protected:
  struct Behaviour {
    bool invalid = false;
    bool expectsKey = false;
    char separator = 0;                             // 0: none
    bool oneBlank = false;                          // as whitespace; else a line feed and the indent
    const YxJsonStreamWriterState* next = nullptr;  // null: stays
  };
  constexpr explicit YxJsonStreamWriterState(const Behaviour& behaviour) : behaviour_(behaviour) {}

 private:
  Behaviour behaviour_;
};

// Each concrete state: sharedInstance() is the one that writers use.
#define SEEDMOTE_WRITER_STATE(ClassName)                                     \
  class ClassName final : public YxJsonStreamWriterState {                   \
   public:                                                                   \
    static constexpr const ClassName& sharedInstance() { return instance_; } \
                                                                             \
   private:                                                                  \
    constexpr ClassName();                                                   \
    static const ClassName instance_;                                        \
  }

SEEDMOTE_WRITER_STATE(YxJsonStreamWriterStateStart);
SEEDMOTE_WRITER_STATE(YxJsonStreamWriterStateComplete);
SEEDMOTE_WRITER_STATE(YxJsonStreamWriterStateError);
SEEDMOTE_WRITER_STATE(YxJsonStreamWriterStateObjectValue);
SEEDMOTE_WRITER_STATE(YxJsonStreamWriterStateArrayStart);
SEEDMOTE_WRITER_STATE(YxJsonStreamWriterStateArrayValue);

#undef SEEDMOTE_WRITER_STATE

class YxJsonStreamWriterStateObjectStart : public YxJsonStreamWriterState {
 public:
  static constexpr const YxJsonStreamWriterStateObjectStart& sharedInstance() { return instance_; }

 protected:
  constexpr explicit YxJsonStreamWriterStateObjectStart(char separator = 0);

 private:
  static const YxJsonStreamWriterStateObjectStart instance_;
};

// Where an object's next key is due: as at its start, but for the comma before it.
class YxJsonStreamWriterStateObjectKey final : public YxJsonStreamWriterStateObjectStart {
 public:
  static constexpr const YxJsonStreamWriterStateObjectKey& sharedInstance() { return instance_; }

 private:
  constexpr YxJsonStreamWriterStateObjectKey();
  static const YxJsonStreamWriterStateObjectKey instance_;
};

}  // namespace seedmote::json
