#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <unordered_set>

#include "can/frame.h"
#include "dbc/database.h"
#include "dbc/scanner.h"
#include "text/strings.h"

namespace dbc {
namespace {

using text::concat;

constexpr double mostIdentifier = 4294967295.0;
constexpr std::uint32_t extendedMark = 0x80000000;
constexpr int mostBytes = 1785;  // of a message in several frames
constexpr int mostBits = 64;     // of a signal

struct Identifier {
  std::uint32_t value = 0;
  bool extended = false;
  [[nodiscard]] std::string key() const { return concat(extended ? "x" : "", value); }
};

std::string withLineFeeds(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    out += text[i] == '\r' ? '\n' : text[i];
  }
  return out;
}

bool isSixteenBit(std::string_view text) {
  return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

class Reader {
 public:
  explicit Reader(std::string_view text) : in_(text) {}

  Database run() {
    for (in_.skipBlanksAndLines(); !in_.atEnd(); in_.skipBlanksAndLines()) statement();
    finishSwitches();
    finishFaults();
    return std::move(database_);
  }

 private:
  // ---- statements

  void statement() {
    const Keyword* keyword = keywordAt(in_.restOfLine());
    const std::size_t line = in_.line();
    if (keyword == nullptr) {
      fault(line, concat("'", text::asUtf8(text::trimmed(in_.restOfLine()).substr(0, 30)),
                         "' is no statement of a database; it is left out"));
      return in_.skipLine();
    }
    in_.advance(keyword->word.size());
    try {
      readStatement(keyword->word);
    } catch (const BadStatement& bad) {
      fault(bad.line, concat(bad.text, "; the statement is left out"));
      if (keyword->word == "BO_") current_ = noMessage;
      keyword->toSemicolon ? in_.skipStatement() : in_.skipLine();
    }
  }

  void readStatement(std::string_view keyword) {
    if (keyword == "BO_") return readMessage();
    if (keyword == "SG_") return readSignal();
    if (keyword == "CM_") return readComment();
    if (keyword == "VAL_") return readValueNames();
    if (keyword == "VAL_TABLE_") return readValueTable();
    if (keyword == "SIG_VALTYPE_") return readValueType();
    if (keyword == "SG_MUL_VAL_") return readSwitchValues();
    if (keyword == "VERSION") return readVersion();
    if (keyword == "BU_") return readNodes();
    if (keyword == "NS_") return skipSymbols();
    if (keyword == "BS_") return in_.skipLine();
    in_.skipStatement();  // attributes and the like
  }

  void readVersion() {
    database_.version = in_.quoted("the version");
    tellRestOfLine();
  }

  void readNodes() {
    in_.take(':');
    while (in_.peek() != '\n') database_.nodes.push_back(in_.word("the name of a node"));
  }

  /// The list of symbols: words alone on a line, many of them keywords.
  void skipSymbols() {
    in_.skipLine();
    const auto isSymbol = [](std::string_view line) {
      const std::string_view word = text::trimmed(line);
      return word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_") == std::string_view::npos;
    };
    while (!in_.atEnd() && isSymbol(in_.restOfLine())) in_.skipLine();
  }

  void tellRestOfLine() {
    if (in_.peek() == '\n') return;
    fault(in_.line(), concat("'", text::asUtf8(text::trimmed(in_.restOfLine()).substr(0, 20)),
                             "' at the end of the line is not understood and left out"));
    in_.skipLine();
  }

  void endStatement() {
    const std::size_t line = in_.line();
    if (!in_.takeSemicolon()) fault(line, "the ';' at the end of the statement is missing");
  }

  // ---- messages and signals

  Identifier identifier() {
    const std::size_t line = in_.line();
    const auto number =
        static_cast<std::uint32_t>(in_.whole("the identifier of a message", 0, mostIdentifier));
    Identifier id{number & ~extendedMark, (number & extendedMark) != 0};
    if (id.value > can::largestExtended && id.value != noMessageIdentifier)
      in_.fail(concat("identifier ", number, " has more than 29 bits"));
    if (id.extended || id.value <= can::largestStandard) return id;
    if (told_.insert(concat("identifier ", id.value)).second)
      fault(line, concat("identifier ", id.value,
                         " has more than 11 bits without the mark of a "
                         "longer one; it is taken as one of 29 bits"));
    id.extended = true;
    return id;
  }

  void readMessage() {
    Message message;
    message.line = in_.line();
    const Identifier id = identifier();
    message.identifier = id.value;
    message.extended = id.extended;
    message.name = in_.word("the name of the message");
    in_.expect(':', "between name and length of the message");
    message.bytes = static_cast<int>(in_.whole("the length of the message", 0, mostBytes));
    if (in_.peek() != '\n') message.sender = in_.word("the sender");
    tellRestOfLine();
    addMessage(std::move(message), id);
  }

  void addMessage(Message message, const Identifier& id) {
    const auto [place, isNew] = messages_.emplace(id.key(), database_.messages.size());
    current_ = place->second;
    if (isNew) return database_.messages.push_back(std::move(message));
    const Message& first = database_.messages[current_];
    fault(message.line, concat("identifier ", id.value, " of message '", message.name,
                               "' is that of '", first.name, "' in line ", first.line,
                               "; its signals are taken into that message"));
  }

  void readSignal() {
    Signal signal;
    signal.line = in_.line();
    signal.name = in_.word("the name of the signal");
    if (current_ == noMessage)
      in_.fail(concat("signal '", signal.name, "' stands below no message that could be read"));
    try {
      readLayout(signal);
    } catch (const BadStatement&) {
      leftOut_.insert(keyOf(currentId(), signal.name));
      throw;
    }
    try {
      readMeaning(signal);
    } catch (const BadStatement& bad) {  // the value can be read all the same
      fault(bad.line, concat(bad.text, "; the rest of the line is left out"));
      in_.skipLine();
    }
    addSignal(std::move(signal));
  }

  /// "Name m3 : 16|8@1+ (0.5,-40)": what is needed to read the value.
  void readLayout(Signal& signal) {
    if (in_.peek() != ':') readMultiplexing(signal, in_.word("':'"));
    in_.expect(':', "before the start bit");
    signal.startBit = static_cast<int>(in_.whole("the start bit", 0, mostBytes * 8 - 1));
    in_.expect('|', "between start bit and number of bits");
    signal.bits = static_cast<int>(in_.whole("the number of bits", 1, mostBytes * 8));
    in_.expect('@', "before the byte order");
    if (!in_.take('1')) {
      in_.expect('0', "as byte order; write 0 or 1");
      signal.order = ByteOrder::msbFirst;
    }
    signal.isSigned = in_.take('-');
    if (!signal.isSigned) in_.expect('+', "as sign; write + or -");
    in_.expect('(', "before the factor");
    signal.factor = in_.number("the factor");
    in_.expect(',', "between factor and offset");
    signal.offset = in_.number("the offset");
    in_.expect(')', "behind the offset");
  }

  void readMeaning(Signal& signal) {
    in_.expect('[', "before the minimum");
    signal.minimum = in_.number("the minimum");
    in_.expect('|', "between minimum and maximum");
    signal.maximum = in_.number("the maximum");
    in_.expect(']', "behind the maximum");
    signal.units = in_.quoted("the unit");
    while (in_.peek() != '\n') {
      signal.receivers.push_back(in_.word("the name of a receiver"));
      in_.take(',');
    }
  }

  /// "M", "m3" or "m3M".
  void readMultiplexing(Signal& signal, std::string_view word) {
    const std::string given(word);
    if (word.ends_with('M')) {
      signal.isSwitch = true;
      word.remove_suffix(1);
    }
    if (word.empty()) return;
    std::uint64_t value = 0;
    const char* const end = word.data() + word.size();
    const bool begins = word.front() == 'm';
    const auto read = std::from_chars(word.data() + 1, end, value);
    if (!begins || read.ec != std::errc() || read.ptr != end)
      in_.fail(concat("'", given,
                      "' tells nothing of multiplexing; write M, m and a number, or "
                      "nothing, before the ':'"));
    signal.onlyFor = {{value, value}};
  }

  void addSignal(Signal signal) {
    Message& message = database_.messages[current_];
    const std::string key = keyOf(currentId(), signal.name);
    const std::string complaint = complaintAbout(signal, message);
    if (!complaint.empty() || signals_.contains(key)) {
      leftOut_.insert(key);
      const std::string twice =
          concat("there is another one of this name in message '", message.name, "'");
      return fault(signal.line, concat("signal '", signal.name,
                                       "' is left out: ", complaint.empty() ? twice : complaint));
    }
    if (signal.factor == 0) {
      fault(signal.line, concat("signal '", signal.name, "' has factor 0; 1 is taken"));
      signal.factor = 1;
    }
    signals_[key] = {current_, message.signals.size()};
    message.signals.push_back(std::move(signal));
  }

  static std::string complaintAbout(const Signal& signal, const Message& message) {
    if (signal.bits > mostBits)
      return concat("it has ", signal.bits, " bits, and a number has at most ", mostBits);
    if (bytesUsed(signal) > message.bytes)
      return concat("it goes to byte ", bytesUsed(signal), ", and message '", message.name,
                    "' has ", message.bytes, " bytes");
    return {};
  }

  [[nodiscard]] Identifier currentId() const {
    return {database_.messages[current_].identifier, database_.messages[current_].extended};
  }

  static std::string keyOf(const Identifier& id, std::string_view signal) {
    return concat(id.key(), " ", signal);
  }

  // ---- what is said of them further down

  Message* messageOf(const Identifier& id) {
    const auto found = messages_.find(id.key());
    if (found != messages_.end()) return &database_.messages[found->second];
    in_.fail(concat("there is no message ", id.value));
  }

  /// nullptr for a signal that was left out, of which enough has been said.
  Signal* signalOf(const Identifier& id, const std::string& name) {
    const std::string key = keyOf(id, name);
    const auto found = signals_.find(key);
    if (found != signals_.end())
      return &database_.messages[found->second.first].signals[found->second.second];
    if (leftOut_.contains(key)) return nullptr;
    in_.fail(concat("there is no signal '", name, "' of message ", id.value));
  }

  Signal* signalNamed() {
    const Identifier id = identifier();
    return signalOf(id, in_.word("the name of the signal"));
  }

  void readComment() {
    std::string* comment = nullptr;
    if (in_.peek() == '"') {
      comment = &database_.comment;
    } else {
      const std::string what = in_.word("what the comment is about");
      if (what == "BO_") {
        comment = &messageOf(identifier())->comment;
      } else if (what == "SG_") {
        if (Signal* signal = signalNamed()) comment = &signal->comment;
      } else if (what == "BU_" || what == "EV_") {
        in_.word("a name");
      } else {
        in_.fail(concat("'", what, "' is nothing to comment on; write BO_, SG_, BU_ or EV_"));
      }
    }
    std::string text = in_.quoted("the comment", true);
    if (comment != nullptr) *comment = std::move(text);
    endStatement();
  }

  std::vector<ValueName> valueNames() {
    std::vector<ValueName> names;
    while (true) {
      const char next = in_.peekOverLines();
      if (!text::isDigit(next) && next != '-' && next != '+') return names;
      in_.skipBlanksAndLines();
      const double value = in_.number("a value");
      names.push_back({value, in_.quoted("the name of a value")});
    }
  }

  void readValueTable() {
    const std::string name = in_.word("the name of the table");
    tables_[name] = valueNames();
    endStatement();
  }

  void readValueNames() {
    if (!text::isDigit(in_.peek())) return in_.skipStatement();  // of an environment variable
    Signal* signal = signalNamed();
    const char next = in_.peek();
    const bool namesTable = text::isLetter(next) || next == '_';
    std::vector<ValueName> names =
        namesTable ? tableNamed(in_.word("the name of the table")) : valueNames();
    if (signal != nullptr) signal->valueNames = std::move(names);
    endStatement();
  }

  const std::vector<ValueName>& tableNamed(const std::string& name) {
    const auto found = tables_.find(name);
    if (found != tables_.end()) return found->second;
    in_.fail(concat("there is no value table '", name, "'"));
  }

  void readValueType() {
    Signal* signal = signalNamed();
    in_.take(':');
    const auto type = static_cast<int>(in_.whole("the type of the value", 0, 2));
    if (signal != nullptr && type != 0) {
      const int bits = type == 1 ? 32 : 64;
      if (signal->bits != bits)
        in_.fail(concat("signal '", signal->name, "' has ", signal->bits, " bits and can't be a ",
                        bits == 32 ? "float" : "double"));
      signal->type = type == 1 ? ValueType::float32 : ValueType::float64;
    }
    endStatement();
  }

  /// "SG_MUL_VAL_ 1 Signal Switch 0-3, 7-7;"
  void readSwitchValues() {
    const Identifier id = identifier();
    Signal* signal = signalOf(id, in_.word("the name of the signal"));
    const std::string switchName = in_.word("the name of its switch");
    signalOf(id, switchName);
    std::vector<Range> ranges;
    do {
      in_.skipBlanksAndLines();
      ranges.push_back(range());
    } while (in_.take(','));
    if (signal != nullptr) {
      signal->switchName = switchName;
      signal->onlyFor = std::move(ranges);
    }
    endStatement();
  }

  Range range() {
    constexpr double most = 4294967295.0;
    const double low = in_.whole("a value of the switch", 0, most);
    in_.expect('-', "in a range of values of the switch");
    const double high = in_.whole("a value of the switch", low, most);
    return {static_cast<std::uint64_t>(low), static_cast<std::uint64_t>(high)};
  }

  // ---- at the end

  void finishSwitches() {
    for (Message& message : database_.messages) {
      constexpr std::size_t enough = 3;  // to tell one that is not the signal itself from several
      std::vector<std::string> switches;
      for (const Signal& signal : message.signals)
        if (signal.isSwitch && switches.size() < enough) switches.push_back(signal.name);
      for (Signal& signal : message.signals)
        if (!signal.onlyFor.empty() && signal.switchName.empty()) setSwitch(signal, switches);
    }
  }

  void setSwitch(Signal& signal, const std::vector<std::string>& switches) {
    const auto others = static_cast<std::size_t>(
        std::count_if(switches.begin(), switches.end(),
                      [&signal](const std::string& name) { return name != signal.name; }));
    for (const std::string& name : switches)
      if (name != signal.name && signal.switchName.empty()) signal.switchName = name;
    if (others == 1) return;
    fault(signal.line, concat("multiplexed signal '", signal.name, "' has ",
                              others == 0 ? "no switch in its message"
                                          : "several switches and no line that names its own; the "
                                            "first is taken"));
  }

  void fault(std::size_t line, std::string text) {
    if (database_.faults.size() < mostFaults)
      database_.faults.push_back({line, std::move(text)});
    else
      ++furtherFaults_;
  }

  void finishFaults() {
    std::stable_sort(database_.faults.begin(), database_.faults.end(),
                     [](const Fault& a, const Fault& b) { return a.line < b.line; });
    if (furtherFaults_ > 0)
      database_.faults.back() = {database_.faults.back().line,
                                 concat(furtherFaults_ + 1, " further faults are not listed")};
  }

  static constexpr std::size_t noMessage = static_cast<std::size_t>(-1);

  Scanner in_;
  Database database_;
  std::size_t current_ = noMessage;  // message that signals belong to
  std::unordered_map<std::string, std::size_t> messages_;
  std::unordered_map<std::string, std::pair<std::size_t, std::size_t>> signals_;
  std::unordered_set<std::string> leftOut_;  // signals with a fault
  std::unordered_set<std::string> told_;
  std::unordered_map<std::string, std::vector<ValueName>> tables_;
  std::size_t furtherFaults_ = 0;
};

Database readText(const std::string& text) { return Reader(text).run(); }

}  // namespace

Database read(std::string_view text) {
  Database database;
  if (isSixteenBit(text))
    database.faults = {{1, "the text has 16 bits a character; save it as UTF-8 and read it again"}};
  else if (text.find('\0') != std::string_view::npos)
    database.faults = {{1, "this is no text: it holds bytes that no text has; name a database"}};
  else
    database = readText(withLineFeeds(text));
  if (database.messages.empty() && database.faults.empty())
    database.faults = {{1, "there are no messages in it; name a CAN database"}};
  return database;
}

int firstBit(const Signal& signal) {
  const int inByte = signal.startBit % 8;
  if (signal.order == ByteOrder::lsbFirst) return signal.startBit;
  return signal.startBit - inByte + 7 - inByte;
}

int bytesUsed(const Signal& signal) { return (firstBit(signal) + signal.bits + 7) / 8; }

}  // namespace dbc
