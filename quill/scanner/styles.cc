// TGScanner: creation, the source styles and their configurations, the
// block-comment text, the list setters and the lookup tables derived from the
// separator text and the comment markers.
#include <string_view>

#include "quill/scanner/internal/text.h"
#include "quill/scanner/tgscanner.h"

namespace quill::Gscanner {
namespace {

struct StyleConfig {
  std::u16string_view seps;
  WideChar str_quote;
  WideChar extra_char_symbol;
  WideChar char_quote;
  std::u16string_view line_comment;
  std::u16string_view block_comments;
};

// The configuration each style installs, character for character. Some
// entries look odd and are kept as they are on purpose: SQL comments lines with
// "//" and escapes with a backslash, C keeps ":=", Pascal keeps "!" and "@".
constexpr StyleConfig kPascal{
    u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= <> { } // (* *) #",
    u'\'', u'#', u'\'', u"//", u"(*-*),{-}"};
constexpr StyleConfig kC{
    u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= != { } // # /* */ ->",
    u'"', u'\\', u'\'', u"//", u"/*-*/"};
constexpr StyleConfig kSQL{
    u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= <> != { } // # /* */ ->",
    u'\'', u'\\', u'\'', u"//", u"/*-*/"};
constexpr StyleConfig kPerl{
    u"( ) [ ] + - * / = < > ! ; , @ ' \" : . := >= <= != { } # -> =~",
    u'"', u'\\', u'\'', u"#", u""};

const StyleConfig* ConfigOf(TSourceStyle style) {
  switch (style) {
    case ssPascal: return &kPascal;
    case ssC: return &kC;
    case ssSQL: return &kSQL;
    case ssPerl: return &kPerl;
    case ssNone: break;
  }
  return nullptr;
}

void SetBit(std::array<uint64_t, 2>& bits, WideChar c) { bits[c >> 6] |= uint64_t{1} << (c & 63); }

}  // namespace

TGScanner::TGScanner() {
  // Every field not set by its initializer starts zeroed; the Pascal style is
  // installed last, from ssNone.
  RebuildSepTable();
  RebuildCommentStarts();
  SetSourceStyle(ssPascal);
}

TGScanner::~TGScanner() = default;

void TGScanner::SetSourceStyle(TSourceStyle Value) {
  if (Value == FSourceStyle) return;
  FSourceStyle = Value;
  const StyleConfig* cfg = ConfigOf(Value);
  if (cfg == nullptr) return;  // ssNone keeps the settings in force
  SetSeps(UnicodeString(cfg->seps));
  FStrQuote = cfg->str_quote;
  FExtraCharSymbol = cfg->extra_char_symbol;
  FCharQuote = cfg->char_quote;
  FLineCommentStr = UnicodeString(cfg->line_comment);
  SetBlockComments(UnicodeString(cfg->block_comments));
  RebuildCommentStarts();
}

void TGScanner::SetSeps(const UnicodeString& Value) {
  FSeps = Value;
  RebuildSepTable();
}

UnicodeString TGScanner::GetBlockComments() const {
  UnicodeString out;
  for (int32_t i = 0; i < FBlockComments1.Count(); ++i) {
    if (i > 0) out += u',';
    out += FBlockComments1.Get(i);
    out += u'-';
    out += FBlockComments2.Get(i);
  }
  return out;
}

void TGScanner::SetBlockComments(const UnicodeString& Value) {
  if (Value == GetBlockComments()) return;
  FBlockComments1.Clear();
  FBlockComments2.Clear();
  TStringList items;
  items.SetCommaText(Value);
  for (int32_t i = 0; i < items.Count(); ++i) {
    const UnicodeString& item = items.Get(i);
    const size_t dash = item.find(u'-');
    if (dash == UnicodeString::npos) continue;  // no divider: not a pair
    FBlockComments1.Add(item.substr(0, dash));
    FBlockComments2.Add(item.substr(dash + 1));
  }
  RebuildCommentStarts();
}

void TGScanner::SetSource(const TStrings& Value) { FSource.Assign(Value); }
void TGScanner::SetVars(const TStrings& Value) { FVars.Assign(Value); }
void TGScanner::SetFuncs(const TStrings& Value) { FFuncs.Assign(Value); }
void TGScanner::SetWords(const TStrings& Value) { FRWords.Assign(Value); }

// The separator tests run for nearly every character of the source, so the
// substring tests over FSeps are answered from bit tables for ASCII: every
// character of FSeps, and every pair of adjacent characters in it. Characters
// outside ASCII fall back to searching FSeps itself.
void TGScanner::RebuildSepTable() {
  sep_single_.fill(0);
  sep_pair_.fill(0);
  for (size_t k = 0; k < FSeps.size(); ++k) {
    const WideChar a = FSeps[k];
    if (a < 128) SetBit(sep_single_, a);
    if (k + 1 < FSeps.size()) {
      const WideChar b = FSeps[k + 1];
      if (a < 128 && b < 128) {
        const unsigned idx = a * 128u + b;
        sep_pair_[idx >> 6] |= uint64_t{1} << (idx & 63);
      }
    }
  }
}

bool TGScanner::SepsContainOtherPair(WideChar a, WideChar b) const {
  const WideChar pair[2] = {a, b};
  return FSeps.find(std::u16string_view(pair, 2)) != UnicodeString::npos;
}

// The first characters of the line comment and of every opener. An empty
// marker stands everywhere, and a marker starting outside ASCII is checked in
// full; both make every such position a candidate.
void TGScanner::RebuildCommentStarts() {
  comment_start_.fill(0);
  comment_start_other_ = false;
  auto note = [this](std::u16string_view marker) {
    if (marker.empty()) {
      comment_start_.fill(~uint64_t{0});
      comment_start_other_ = true;
    } else if (marker[0] < 128) {
      SetBit(comment_start_, marker[0]);
    } else {
      comment_start_other_ = true;
    }
  };
  note(FLineCommentStr);
  for (int32_t i = 0; i < FBlockComments1.Count(); ++i) note(FBlockComments1.Get(i));
}

}  // namespace quill::Gscanner
