// The one XML layer of the library: a reader that walks a document tag by tag and hands each
// element to a per-class handler, and a writer for the same shapes. Every class with an XML
// form (matrices of two to four dimensions, data table, self-organising map, memory-based
// learner) supplies only its tag handler and its writer; entities, quoting, comments, line
// ends and cut-off documents are dealt with here and nowhere else.
//
// The documents are small, tag-driven ones: no namespaces, no validation. What the reader
// copes with:
//   - an XML declaration <?...?>, other processing instructions, <!DOCTYPE ...> (skipped),
//   - comments <!-- ... --> anywhere, also inside content (skipped),
//   - CDATA sections <![CDATA[...]]> (their text joins the content literally),
//   - blank lines, indentation, CR LF or LF line ends,
//   - attributes in any order, values in single or double quotes,
//   - the five predefined entities and numeric references (&#65; &#x41;, written as UTF-8)
//     in content and attribute values; an unknown entity stays as it was written,
//   - self-closing elements <cell ix="1" iy="2"/>,
//   - a document that ends anywhere (reported as cut short, never a hang or a crash).
//
// The handler protocol. The reader hands over one TXmlTag per element, in document order:
//   - a leaf element <name attrs>text</name> (or <name attrs/>) arrives once, with its
//     decoded text as Content (exactly as written, blanks included) and its closing tag
//     consumed;
//   - an element that holds other elements arrives when its first child starts, with the
//     text before that child, trimmed, as Content; its closing tag arrives later as a tag of
//     its own whose Name is "/name" (Attributes and Content empty);
//   - a closing tag that matches nothing open also arrives as "/name".
// The handler returns kXmlTagGoOn (0) to go on, kXmlTagDone (1) when the document is
// complete, or kXmlTagInvalid (-1) to stop at a tag it does not accept. The views of a
// TXmlTag live only during the handler call.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace quv {

/// One element as the reader hands it to a handler (see the protocol above).
struct TXmlTag {
  std::string_view Name;        ///< element name, or "/name" for a container's closing tag
  std::string_view Attributes;  ///< the raw attribute text after the name (not decoded)
  std::string_view Content;     ///< the decoded text content
};

/// Handler results.
inline constexpr std::int32_t kXmlTagGoOn = 0;
inline constexpr std::int32_t kXmlTagDone = 1;
inline constexpr std::int32_t kXmlTagInvalid = -1;

/// Per-element handler: returns kXmlTagGoOn, kXmlTagDone or kXmlTagInvalid.
using TXmlTagHandler = std::function<std::int32_t(const TXmlTag& tag)>;

/// How a document read ended.
enum TXmlReadResult : std::int8_t {
  xrDone,        ///< the handler returned kXmlTagDone
  xrInvalidTag,  ///< the handler returned kXmlTagInvalid
  xrCutShort,    ///< the input ended before the handler was done (also inside a tag)
  xrMalformed    ///< markup that is not XML: "<" followed by no name, or a bad closing tag
};

/// Reads elements from the stream's current position and hands each to handler until it
/// returns something other than kXmlTagGoOn or the input ends. The stream is left just
/// behind the tag that ended the read (a reader of several documents in one stream can go on
/// from there).
TXmlReadResult ReadXmlTags(std::istream& stream, const TXmlTagHandler& handler);

/// The enumerator of a tag vocabulary whose text equals name: texts[i] belongs to the i-th
/// enumerator of E. fallback (the vocabulary's invalid tag) when no text matches.
template <class E, std::size_t N>
E XmlTagOf(std::string_view name, const std::array<std::string_view, N>& texts, E fallback) {
  for (std::size_t i = 0; i < N; ++i) {
    if (texts[i] == name) return static_cast<E>(i);
  }
  return fallback;
}

// ----- reading values -----

/// The decoded value of attribute name in an attribute text (as TXmlTag::Attributes holds
/// it). False, value untouched, when the attribute is absent or the text is not a sequence
/// of name="value" / name='value' pairs up to it.
bool XmlAttribute(std::string_view attributes, std::string_view name, std::string& value);
/// An attribute read as a whole decimal Int32 (XmlParseInt); false when absent or not one.
bool XmlIntAttribute(std::string_view attributes, std::string_view name, std::int32_t& value);
/// An attribute read as a double (XmlParseDouble); false when absent or not one.
bool XmlDoubleAttribute(std::string_view attributes, std::string_view name, double& value);

/// Text that holds one decimal Int32 (optional sign, digits) between optional blanks, tabs,
/// CRs and LFs. False, value untouched, otherwise (also on overflow).
bool XmlParseInt(std::string_view text, std::int32_t& value);
/// Text that holds one floating-point number between optional white space: optional sign,
/// digits, decimal point, exponent, case-insensitive, or NaN / INF / INFINITY with an
/// optional sign. Reads the text XmlNumber writes back bit-exact. False, value untouched,
/// otherwise.
bool XmlParseDouble(std::string_view text, double& value);

/// Text with & < > " ' replaced by their entities (usable in content and attribute values).
std::string XmlEscape(std::string_view text);
/// Text with entity and character references replaced (unknown entities kept as written).
std::string XmlUnescape(std::string_view text);

// ----- writing values -----

/// The text of a number as the writers put it: a double in its shortest form that reads
/// back bit-exact ("0.1", "-0", "5e-324", "1.7976931348623157e+308"; "NaN", "INF", "-INF"),
/// an integer in plain decimal. Holds its characters itself: no allocation.
class TXmlNumber {
 public:
  explicit TXmlNumber(double x);
  explicit TXmlNumber(std::int64_t n);
  explicit TXmlNumber(std::int32_t n) : TXmlNumber(static_cast<std::int64_t>(n)) {}
  std::string_view View() const { return {text_.data(), size_}; }
  operator std::string_view() const { return View(); }  // NOLINT: used as an attribute value

 private:
  std::array<char, 32> text_{};
  std::size_t size_ = 0;
};

/// The XmlNumber text of x as a string.
std::string XmlNumber(double x);

/// An attribute to write: name and (unescaped) value.
using TXmlAttribute = std::pair<std::string_view, std::string_view>;
using TXmlAttributes = std::initializer_list<TXmlAttribute>;

/// Writes a document element by element: one element per line, indented by two blanks per
/// level of nesting, lines ended by CR LF (the library's text line end) unless told
/// otherwise. Text and attribute values are escaped. Output is buffered and reaches the
/// stream at Flush, at the latest in the destructor; errors are the stream's own (its state
/// and exceptions mask).
class TXmlWriter {
 public:
  explicit TXmlWriter(std::ostream& stream, std::string_view lineEnd = "\r\n");
  ~TXmlWriter();
  TXmlWriter(const TXmlWriter&) = delete;
  TXmlWriter& operator=(const TXmlWriter&) = delete;

  /// <?xml version="1.0" encoding="UTF-8"?>
  void Declaration();
  /// <!-- text --> ("--" inside the text is written "- -", which XML does not allow).
  void Comment(std::string_view text);
  /// <name a="v" ...> on a line of its own; what follows is nested one level deeper.
  void Open(std::string_view name, TXmlAttributes attributes = {});
  /// </name>, one level less deep.
  void Close(std::string_view name);
  /// <name a="v" ...>content</name> on one line; <name a="v" .../> when content is empty
  /// and selfClose is true.
  void Element(std::string_view name, std::string_view content, TXmlAttributes attributes = {},
               bool selfClose = false);
  /// Passes the buffered text to the stream.
  void Flush();

 private:
  void StartLine();
  void AppendAttributes(TXmlAttributes attributes);
  void AppendEscaped(std::string_view text);

  std::ostream& stream_;
  std::string lineEnd_;
  std::string buffer_;
  std::int32_t depth_ = 0;
};

}  // namespace quv
