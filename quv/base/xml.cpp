// The XML reader and writer (see xml.h for the protocol).
#include "quv/base/xml.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <streambuf>
#include <system_error>

namespace quv {
namespace {

constexpr int kEnd = std::char_traits<char>::eof();

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view Trim(std::string_view s) {
  while (!s.empty() && IsBlank(s.front()))
    s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back()))
    s.remove_suffix(1);
  return s;
}

bool IsNameChar(char c) {
  return !IsBlank(c) && c != '/' && c != '>' && c != '<' && c != '=';
}

void AppendUtf8(std::string& out, std::uint32_t code) {
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    out += static_cast<char>(0xE0 | (code >> 12));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (code >> 18));
    out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  }
}

// Appends the replacement of the entity name (the text between & and ;); false when it is
// not one this layer knows.
bool AppendEntity(std::string& out, std::string_view name) {
  static constexpr std::pair<std::string_view, char> kNamed[] = {
      {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
  for (const auto& [text, c] : kNamed) {
    if (name == text) {
      out += c;
      return true;
    }
  }
  if (name.size() < 2 || name[0] != '#') return false;
  const bool hex = name[1] == 'x' || name[1] == 'X';
  const std::string_view digits = name.substr(hex ? 2 : 1);
  std::uint32_t code = 0;
  const auto [end, ec] =
      std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
  if (ec != std::errc() || end != digits.data() + digits.size() || digits.empty() || code == 0 ||
      code > 0x10FFFF)
    return false;
  AppendUtf8(out, code);
  return true;
}

// Longest entity name this layer looks for between & and ; ("#x10FFFF" and a little room).
constexpr std::size_t kMaxEntityName = 10;

// Appends text to out with the references replaced.
void AppendUnescaped(std::string& out, std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t amp = text.find('&', i);
    if (amp == std::string_view::npos) {
      out.append(text.substr(i));
      return;
    }
    out.append(text.substr(i, amp - i));
    const std::size_t semi = text.find(';', amp + 1);
    if (semi != std::string_view::npos && semi - amp - 1 <= kMaxEntityName &&
        AppendEntity(out, text.substr(amp + 1, semi - amp - 1))) {
      i = semi + 1;
    } else {
      out += '&';
      i = amp + 1;
    }
  }
}

// Pulls characters from the stream's buffer; the hot loops stay in the buffer's inline path.
class TSource {
 public:
  explicit TSource(std::istream& stream) : buf_(stream.rdbuf()) {}
  int Get() { return buf_ != nullptr ? buf_->sbumpc() : kEnd; }
  int Peek() { return buf_ != nullptr ? buf_->sgetc() : kEnd; }

  // Reads up to and including the terminator; what came before it is appended to out when
  // out is given. False when the input ends first.
  bool ReadUntil(std::string_view terminator, std::string* out) {
    std::string window;
    std::string& text = out != nullptr ? *out : window;
    const std::size_t start = text.size();
    for (;;) {
      const int c = Get();
      if (c == kEnd) return false;
      text += static_cast<char>(c);
      if (text.size() - start >= terminator.size() && text.ends_with(terminator)) {
        text.resize(text.size() - terminator.size());
        return true;
      }
      if (out == nullptr && window.size() > 256) window.erase(0, window.size() - terminator.size());
    }
  }

 private:
  std::streambuf* buf_;
};

// Reads the rest of a <...> tag after "<": name up to the first blank, "/" or ">", then the
// raw attribute text up to the ">" outside quotes. selfClosing when it ends with "/>".
enum TTagRead : std::uint8_t { trOk, trCutShort, trMalformed };

TTagRead ReadTag(TSource& src, std::string& name, std::string& attributes, bool& selfClosing) {
  name.clear();
  attributes.clear();
  selfClosing = false;
  int c = src.Peek();
  while (c != kEnd && IsNameChar(static_cast<char>(c))) {
    name += static_cast<char>(src.Get());
    c = src.Peek();
  }
  if (c == kEnd) return trCutShort;
  if (name.empty()) return trMalformed;
  char quote = 0;
  for (;;) {
    c = src.Get();
    if (c == kEnd) return trCutShort;
    const char ch = static_cast<char>(c);
    if (quote != 0) {
      if (ch == quote) quote = 0;
    } else if (ch == '"' || ch == '\'') {
      quote = ch;
    } else if (ch == '>') {
      break;
    } else if (ch == '<') {
      return trMalformed;
    }
    attributes += ch;
  }
  std::string_view a = Trim(attributes);
  if (!a.empty() && a.back() == '/') {
    selfClosing = true;
    a.remove_suffix(1);
  }
  attributes.assign(Trim(a));
  return trOk;
}

// Skips a <!...> construct after "<!": a comment, a CDATA section (its text appended to
// content) or a declaration such as <!DOCTYPE ...> with an optional internal subset.
TTagRead SkipBang(TSource& src, std::string& content) {
  if (src.Peek() == '-') {
    src.Get();
    const int second = src.Get();
    if (second == kEnd) return trCutShort;
    if (second != '-') return trMalformed;
    return src.ReadUntil("-->", nullptr) ? trOk : trCutShort;
  }
  if (src.Peek() == '[') {
    std::string head;
    while (head.size() < 7) {
      const int c = src.Get();
      if (c == kEnd) return trCutShort;
      head += static_cast<char>(c);
    }
    if (head != "[CDATA[") return trMalformed;
    return src.ReadUntil("]]>", &content) ? trOk : trCutShort;
  }
  std::int32_t depth = 0;
  for (;;) {
    const int c = src.Get();
    if (c == kEnd) return trCutShort;
    if (c == '[') ++depth;
    if (c == ']') --depth;
    if (c == '>' && depth <= 0) return trOk;
  }
}

}  // namespace

TXmlReadResult ReadXmlTags(std::istream& stream, const TXmlTagHandler& handler) {
  TSource src(stream);
  std::string raw;      // text read since the last tag, references not yet replaced
  std::string content;  // decoded text
  std::string name, attributes;
  std::string pendingName, pendingAttributes;
  bool pending = false;
  bool selfClosing = false;

  // Hands one element over; returns the result to stop with, or -1 as "go on".
  auto deliver = [&](std::string_view n, std::string_view a, std::string_view c) -> int {
    const std::int32_t r = handler(TXmlTag{n, a, c});
    if (r == kXmlTagDone) return xrDone;
    if (r == kXmlTagInvalid) return xrInvalidTag;
    return -1;
  };
  // The text gathered since the last tag, decoded, added to content.
  auto takeText = [&] {
    AppendUnescaped(content, raw);
    raw.clear();
  };
  // A pending element that turned out to hold other elements goes out now.
  auto flushPending = [&]() -> int {
    if (!pending) return -1;
    pending = false;
    return deliver(pendingName, pendingAttributes, Trim(content));
  };

  for (;;) {
    int c = src.Get();
    while (c != kEnd && c != '<') {
      raw += static_cast<char>(c);
      c = src.Get();
    }
    if (c == kEnd) return xrCutShort;
    takeText();
    const int next = src.Peek();
    if (next == kEnd) return xrCutShort;
    if (next == '?') {
      if (!src.ReadUntil("?>", nullptr)) return xrCutShort;
      continue;
    }
    if (next == '!') {
      src.Get();
      const TTagRead r = SkipBang(src, content);
      if (r == trCutShort) return xrCutShort;
      if (r == trMalformed) return xrMalformed;
      continue;
    }
    if (next == '/') {
      src.Get();
      const TTagRead r = ReadTag(src, name, attributes, selfClosing);
      if (r == trCutShort) return xrCutShort;
      if (r == trMalformed || !attributes.empty() || selfClosing) return xrMalformed;
      int result = -1;
      if (pending && name == pendingName) {
        pending = false;
        result = deliver(pendingName, pendingAttributes, content);
      } else {
        result = flushPending();
        if (result < 0) {
          name.insert(name.begin(), '/');
          result = deliver(name, {}, {});
        }
      }
      content.clear();
      if (result >= 0) return static_cast<TXmlReadResult>(result);
      continue;
    }
    const TTagRead r = ReadTag(src, name, attributes, selfClosing);
    if (r == trCutShort) return xrCutShort;
    if (r == trMalformed) return xrMalformed;
    int result = flushPending();
    content.clear();
    if (result >= 0) return static_cast<TXmlReadResult>(result);
    if (selfClosing) {
      result = deliver(name, attributes, {});
      if (result >= 0) return static_cast<TXmlReadResult>(result);
    } else {
      pending = true;
      pendingName.swap(name);
      pendingAttributes.swap(attributes);
    }
  }
}

bool XmlAttribute(std::string_view attributes, std::string_view name, std::string& value) {
  std::string_view s = attributes;
  for (;;) {
    s = Trim(s);
    if (s.empty()) return false;
    std::size_t n = 0;
    while (n < s.size() && IsNameChar(s[n]))
      ++n;
    if (n == 0) return false;
    const std::string_view attrName = s.substr(0, n);
    s = Trim(s.substr(n));
    if (s.empty() || s.front() != '=') return false;
    s = Trim(s.substr(1));
    if (s.empty() || (s.front() != '"' && s.front() != '\'')) return false;
    const std::size_t close = s.find(s.front(), 1);
    if (close == std::string_view::npos) return false;
    if (attrName == name) {
      std::string decoded;
      AppendUnescaped(decoded, s.substr(1, close - 1));
      value = std::move(decoded);
      return true;
    }
    s = s.substr(close + 1);
  }
}

bool XmlIntAttribute(std::string_view attributes, std::string_view name, std::int32_t& value) {
  std::string text;
  return XmlAttribute(attributes, name, text) && XmlParseInt(text, value);
}

bool XmlDoubleAttribute(std::string_view attributes, std::string_view name, double& value) {
  std::string text;
  return XmlAttribute(attributes, name, text) && XmlParseDouble(text, value);
}

bool XmlParseInt(std::string_view text, std::int32_t& value) {
  text = Trim(text);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return false;
  }
  if (text.empty() || text.front() == '+') return false;
  std::int32_t v = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || end != text.data() + text.size()) return false;
  value = v;
  return true;
}

bool XmlParseDouble(std::string_view text, double& value) {
  text = Trim(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty() || text.front() == '+' || text.front() == '-') return false;
  double v = 0.0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  // from_chars reports values beyond the double range as out of range; the text is still a
  // number, and its value the infinity or zero that strtod would give.
  if (ec == std::errc::result_out_of_range && end == text.data() + text.size()) {
    const std::string copy(text);
    v = std::strtod(copy.c_str(), nullptr);
  } else if (ec != std::errc() || end != text.data() + text.size()) {
    return false;
  }
  value = negative ? -v : v;
  return true;
}

std::string XmlEscape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string XmlUnescape(std::string_view text) {
  std::string out;
  AppendUnescaped(out, text);
  return out;
}

TXmlNumber::TXmlNumber(double x) {
  std::string_view special;
  if (std::isnan(x)) {
    special = "NaN";
  } else if (std::isinf(x)) {
    special = x > 0 ? "INF" : "-INF";
  }
  if (!special.empty()) {
    special.copy(text_.data(), special.size());
    size_ = special.size();
    return;
  }
  const auto result = std::to_chars(text_.data(), text_.data() + text_.size(), x);
  size_ = static_cast<std::size_t>(result.ptr - text_.data());
}

TXmlNumber::TXmlNumber(std::int64_t n) {
  const auto result = std::to_chars(text_.data(), text_.data() + text_.size(), n);
  size_ = static_cast<std::size_t>(result.ptr - text_.data());
}

std::string XmlNumber(double x) {
  return std::string(TXmlNumber(x).View());
}

// ----- writer -----

namespace {
constexpr std::size_t kWriterChunk = 1 << 16;
}

TXmlWriter::TXmlWriter(std::ostream& stream, std::string_view lineEnd)
    : stream_(stream), lineEnd_(lineEnd) {
  buffer_.reserve(kWriterChunk + 1024);
}

TXmlWriter::~TXmlWriter() {
  try {
    Flush();
  } catch (...) {
    // A stream that raises on failure raised already on an earlier Flush, or the caller
    // flushed; a destructor must not throw.
  }
}

void TXmlWriter::Flush() {
  if (buffer_.empty()) return;
  stream_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  buffer_.clear();
}

void TXmlWriter::StartLine() {
  if (buffer_.size() >= kWriterChunk) Flush();
  buffer_.append(static_cast<std::size_t>(2 * depth_), ' ');
}

void TXmlWriter::AppendEscaped(std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&':
        buffer_ += "&amp;";
        break;
      case '<':
        buffer_ += "&lt;";
        break;
      case '>':
        buffer_ += "&gt;";
        break;
      case '"':
        buffer_ += "&quot;";
        break;
      case '\'':
        buffer_ += "&apos;";
        break;
      default:
        buffer_ += c;
    }
  }
}

void TXmlWriter::AppendAttributes(TXmlAttributes attributes) {
  for (const auto& [name, value] : attributes) {
    buffer_ += ' ';
    buffer_ += name;
    buffer_ += "=\"";
    AppendEscaped(value);
    buffer_ += '"';
  }
}

void TXmlWriter::Declaration() {
  StartLine();
  buffer_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  buffer_ += lineEnd_;
}

void TXmlWriter::Comment(std::string_view text) {
  StartLine();
  buffer_ += "<!-- ";
  for (std::size_t i = 0; i < text.size(); ++i) {
    buffer_ += text[i];
    if (text[i] == '-' && (i + 1 == text.size() || text[i + 1] == '-')) buffer_ += ' ';
  }
  buffer_ += " -->";
  buffer_ += lineEnd_;
}

void TXmlWriter::Open(std::string_view name, TXmlAttributes attributes) {
  StartLine();
  buffer_ += '<';
  buffer_ += name;
  AppendAttributes(attributes);
  buffer_ += '>';
  buffer_ += lineEnd_;
  ++depth_;
}

void TXmlWriter::Close(std::string_view name) {
  if (depth_ > 0) --depth_;
  StartLine();
  buffer_ += "</";
  buffer_ += name;
  buffer_ += '>';
  buffer_ += lineEnd_;
}

void TXmlWriter::Element(std::string_view name, std::string_view content, TXmlAttributes attributes,
                         bool selfClose) {
  StartLine();
  buffer_ += '<';
  buffer_ += name;
  AppendAttributes(attributes);
  if (content.empty() && selfClose) {
    buffer_ += "/>";
  } else {
    buffer_ += '>';
    AppendEscaped(content);
    buffer_ += "</";
    buffer_ += name;
    buffer_ += '>';
  }
  buffer_ += lineEnd_;
}

}  // namespace quv
