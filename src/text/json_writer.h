#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace text {

/// Writes JSON as it comes, without a document in memory: the finished text goes to the drain in
/// pieces of about 64 KiB. Nesting and commas are kept here; keys and values are given in order.
class JsonWriter {
 public:
  using Drain = std::function<void(std::string_view)>;
  explicit JsonWriter(Drain drain);
  ~JsonWriter() = default;
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  void openObject() { open('{'); }
  void closeObject() { close('}'); }
  void openArray() { open('['); }
  void closeArray() { close(']'); }
  void key(std::string_view name);  // one of the program's own: nothing in it needs an escape

  void value(std::string_view text);
  void value(const char* text) { value(std::string_view(text)); }
  void value(const std::string& text) { value(std::string_view(text)); }
  void value(bool flag);
  void value(double number);  // not-a-number and infinity become null
  void value(std::int64_t number);
  void value(int number) { value(static_cast<std::int64_t>(number)); }

  template <class T>
  void member(std::string_view name, const T& content) {
    key(name);
    value(content);
  }

  /// Ends the document with a line break and hands the rest to the drain.
  void finish();

 private:
  void open(char bracket);
  void close(char bracket);
  void comma();
  void quoted(std::string_view text);
  void room(std::size_t bytes);
  void put(char c) { buffer_[size_++] = c; }
  void put(std::string_view text);
  void putEscaped(unsigned char c);
  void drain();

  Drain drain_;
  std::size_t capacity_;
  std::unique_ptr<char[]> buffer_;
  std::size_t size_ = 0;
  std::string number_;  // the last one that was not whole
  bool first_ = true;
};

}  // namespace text
