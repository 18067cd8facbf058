// TStrings / TStringList: the runtime's ordered list of UTF-16 strings, each
// with an optional attached object.
//
// Indexes are 0-based; every indexed access checks its index and raises
// EStringListError "List index out of bounds (%d)" (Insert also accepts
// Count()). IndexOf ignores case by default (CaseSensitive false) and uses the
// locale-aware comparison (AnsiCompareText / AnsiCompareStr).
//
// CommaText/DelimitedText follow the runtime's quoting and splitting rules:
// reading quotes an item that holds the QuoteChar, the Delimiter or a
// character 1..32 (unless StrictDelimiter); a list holding one empty string
// reads as "\"\"". Writing clears the list and splits at the Delimiter and at
// runs of characters 1..32, reading QuoteChar-quoted items with doubled quotes.
// A closing quote ends an item even without a delimiter, an unterminated quote
// takes the rest of the text, and an embedded #0 ends the text being split.
//
//   TStringList sl;  sl.SetCommaText(u"a, \"b c\",,d");   // a | b c | (empty) | d
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/tobject.h"
#include "quill/rtl/types.h"

namespace quill {

enum TDuplicates : uint8_t { dupIgnore, dupAccept, dupError };

class QUILL_API TStrings : public TObject {
 public:
  TStrings() = default;
  ~TStrings() override;

  // --- the storage operations every list provides ---
  [[nodiscard]] virtual int32_t Count() const = 0;
  [[nodiscard]] virtual const UnicodeString& Get(int32_t index) const = 0;
  virtual void Put(int32_t index, const UnicodeString& s) = 0;
  [[nodiscard]] virtual TObject* GetObject(int32_t index) const = 0;
  virtual void PutObject(int32_t index, TObject* obj) = 0;
  virtual void InsertObject(int32_t index, const UnicodeString& s, TObject* obj) = 0;
  virtual void Delete(int32_t index) = 0;
  virtual void Clear() = 0;

  // --- built on the storage operations ---
  // Property Strings (default property).
  [[nodiscard]] const UnicodeString& Strings(int32_t index) const { return Get(index); }
  void SetStrings(int32_t index, const UnicodeString& s) { Put(index, s); }
  [[nodiscard]] const UnicodeString& operator[](int32_t index) const { return Get(index); }
  // Property Objects.
  [[nodiscard]] TObject* Objects(int32_t index) const { return GetObject(index); }
  void SetObjects(int32_t index, TObject* obj) { PutObject(index, obj); }

  virtual int32_t Add(const UnicodeString& s);
  virtual int32_t AddObject(const UnicodeString& s, TObject* obj);
  void Insert(int32_t index, const UnicodeString& s) { InsertObject(index, s, nullptr); }
  // Adds every string (and object) of `other`.
  void AddStrings(const TStrings& other);
  // Replaces the contents by those of `source` (objects copied as pointers)
  // and copies Delimiter, QuoteChar, NameValueSeparator, StrictDelimiter and
  // LineBreak. Sorted, CaseSensitive and Duplicates stay the destination's
  // own; a sorted destination sorts the new lines under its own rules.
  virtual void Assign(const TStrings& source);
  // Swaps two lines with their objects.
  virtual void Exchange(int32_t index1, int32_t index2);
  // Moves line `cur_index` (with its object) so that it ends up at
  // `new_index`; both must be valid indexes.
  virtual void Move(int32_t cur_index, int32_t new_index);

  // Index of the first string equal to `s` under CompareStrings, or -1.
  [[nodiscard]] virtual int32_t IndexOf(const UnicodeString& s) const;
  [[nodiscard]] int32_t IndexOfObject(const TObject* obj) const;
  // Index of the first "name=value" string whose name equals `name` under
  // CompareStrings, or -1.
  [[nodiscard]] int32_t IndexOfName(const UnicodeString& name) const;
  // The name / value part of string `index`, split at the first
  // NameValueSeparator; both are empty for a string without separator.
  // ValueFromIndex(-1) is empty (no error).
  [[nodiscard]] UnicodeString Names(int32_t index) const;
  [[nodiscard]] UnicodeString ValueFromIndex(int32_t index) const;
  [[nodiscard]] UnicodeString Values(const UnicodeString& name) const;
  // Replaces the line of `name` by "name=value" (adds it when absent); an
  // empty value deletes the line.
  void SetValues(const UnicodeString& name, const UnicodeString& value);

  // Lines joined with LineBreak ("\n" by default), each followed by it.
  [[nodiscard]] UnicodeString Text() const;
  // Clears the list and adds the lines of `text`, split at CR, LF and CR LF
  // (when LineBreak is one of those) or at LineBreak itself otherwise. A final
  // line break adds no empty line; #0 is an ordinary character here.
  void SetText(const UnicodeString& text);
  // Delimited text with ',' and '"' whatever Delimiter and QuoteChar are;
  // the setter leaves those two properties unchanged. StrictDelimiter applies.
  [[nodiscard]] UnicodeString CommaText() const;
  void SetCommaText(const UnicodeString& text);
  // The items joined with Delimiter, quoted with QuoteChar where needed; an
  // empty list gives "". The setter clears the list and Adds each item (so a
  // sorted list sorts them and applies Duplicates). With StrictDelimiter only
  // the Delimiter separates items and blanks are kept.
  [[nodiscard]] UnicodeString DelimitedText() const;
  void SetDelimitedText(const UnicodeString& text);

  [[nodiscard]] WideChar Delimiter() const { return delimiter_; }
  void SetDelimiter(WideChar c) { delimiter_ = c; }
  [[nodiscard]] WideChar QuoteChar() const { return quote_char_; }
  void SetQuoteChar(WideChar c) { quote_char_ = c; }
  [[nodiscard]] WideChar NameValueSeparator() const { return name_value_separator_; }
  void SetNameValueSeparator(WideChar c) { name_value_separator_ = c; }
  [[nodiscard]] bool StrictDelimiter() const { return strict_delimiter_; }
  void SetStrictDelimiter(bool v) { strict_delimiter_ = v; }
  [[nodiscard]] const UnicodeString& LineBreak() const { return line_break_; }
  void SetLineBreak(const UnicodeString& lb) { line_break_ = lb; }

  // Reads / writes UTF-8 text files (a UTF-8 byte-order mark is skipped on
  // reading; none is written). Raise EFOpenError / EFCreateError; a failed
  // load leaves the list unchanged.
  virtual void LoadFromFile(const std::string& file_name);
  virtual void SaveToFile(const std::string& file_name) const;

  // Update nesting; lists that notify changes may defer them while > 0.
  void BeginUpdate() { ++update_count_; }
  void EndUpdate() { if (update_count_ > 0) --update_count_; }

  // Compares two strings the way IndexOf does (case-insensitive unless the
  // list says otherwise).
  [[nodiscard]] virtual int CompareStrings(const UnicodeString& a, const UnicodeString& b) const;

  // Hint that the list is about to hold `count` strings; lists with
  // contiguous storage reserve room so that bulk loads stay linear. The
  // default does nothing.
  virtual void ReserveFor(int32_t count);

  // Raises EStringListError with Format(msg, {data}).
  [[noreturn]] static void Error(const char16_t* msg, int32_t data);

 protected:
  int32_t update_count_ = 0;

 private:
  WideChar delimiter_ = u',';
  WideChar quote_char_ = u'"';
  WideChar name_value_separator_ = u'=';
  bool strict_delimiter_ = false;
  UnicodeString line_break_ = u"\n";
};

class QUILL_API TStringList : public TStrings {
 public:
  TStringList() = default;
  explicit TStringList(bool owns_objects) : owns_objects_(owns_objects) {}
  ~TStringList() override;
  TStringList(const TStringList&) = delete;
  TStringList& operator=(const TStringList&) = delete;

  [[nodiscard]] int32_t Count() const override { return static_cast<int32_t>(items_.size()); }
  [[nodiscard]] const UnicodeString& Get(int32_t index) const override;
  void Put(int32_t index, const UnicodeString& s) override;
  [[nodiscard]] TObject* GetObject(int32_t index) const override;
  void PutObject(int32_t index, TObject* obj) override;
  void InsertObject(int32_t index, const UnicodeString& s, TObject* obj) override;
  void Delete(int32_t index) override;
  void Clear() override;

  int32_t Add(const UnicodeString& s) override;
  int32_t AddObject(const UnicodeString& s, TObject* obj) override;
  // Exchange is allowed on a sorted list (the caller takes care of the
  // order); Move raises "Operation not allowed on sorted list" like Insert.
  void Exchange(int32_t index1, int32_t index2) override;
  void Move(int32_t cur_index, int32_t new_index) override;
  [[nodiscard]] int32_t IndexOf(const UnicodeString& s) const override;
  [[nodiscard]] int CompareStrings(const UnicodeString& a, const UnicodeString& b) const override;

  // Binary search of a sorted list: true and the index when found, else false
  // and the insertion index. With dupAccept the first of equal lines is found.
  bool Find(const UnicodeString& s, int32_t& index) const;
  // Sorts an unsorted list once (stable; Sorted() stays false). A sorted list
  // is always in order already.
  void Sort();

  // A sorted list keeps its lines in CompareStrings order: Add/AddObject put
  // each line in place and apply Duplicates (dupIgnore drops the new line and
  // returns the existing index, leaving the object with the caller; dupError
  // raises "String list does not allow duplicates"); Insert, Put and Move raise
  // "Operation not allowed on sorted list". Switching Sorted on sorts the list.
  [[nodiscard]] bool Sorted() const { return sorted_; }
  void SetSorted(bool v);
  [[nodiscard]] TDuplicates Duplicates() const { return duplicates_; }
  void SetDuplicates(TDuplicates d) { duplicates_ = d; }
  // Chooses AnsiCompareStr over AnsiCompareText; a sorted list re-sorts.
  [[nodiscard]] bool CaseSensitive() const { return case_sensitive_; }
  void SetCaseSensitive(bool v);
  // False switches to the ordinal CompareText / CompareStr (ASCII letters
  // folded, no locale); a sorted list re-sorts. Default true.
  [[nodiscard]] bool UseLocale() const { return use_locale_; }
  void SetUseLocale(bool v);
  // An owning list deletes the object of a line on Delete, Clear and its own
  // destruction (not when PutObject replaces it).
  [[nodiscard]] bool OwnsObjects() const { return owns_objects_; }
  void SetOwnsObjects(bool v) { owns_objects_ = v; }

  // Reserves room for `n` strings; below Count() raises EStringListError
  // "List capacity out of bounds (%d)".
  void SetCapacity(int32_t n);
  void ReserveFor(int32_t count) override;
  [[nodiscard]] int32_t Capacity() const { return static_cast<int32_t>(items_.capacity()); }

 private:
  struct Item {
    UnicodeString str;
    TObject* obj = nullptr;
  };
  void CheckIndex(int32_t index) const;
  void SortItems();
  std::vector<Item> items_;
  bool sorted_ = false;
  bool case_sensitive_ = false;
  bool use_locale_ = true;
  bool owns_objects_ = false;
  TDuplicates duplicates_ = dupIgnore;
};

}  // namespace quill
