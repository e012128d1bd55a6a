#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <new>
#include <ostream>
#include <utility>
#include <vector>

#include "NullPointer.h"
#include "Utf8.h"

namespace Pegasus {
namespace {

constexpr Uint32 minCapacity = 8;
constexpr Uint32 maxCapacity = 0x3FFFFFFF;
constexpr Char16 noUnits[1] = {};

template <typename Text>
Text* notNull(Text* text) {
  if (text == nullptr) throw NullPointer();
  return text;
}

void requireRange(bool within) {
  if (!within) throw IndexOutOfBoundsException();
}

Uint32 checkedSize(std::size_t size) {
  if (size > maxCapacity) throw std::bad_alloc();
  return static_cast<Uint32>(size);
}

Uint32 lengthOf(const char* text) { return checkedSize(std::strlen(notNull(text))); }

Uint32 lengthOf(const Char16* units) {
  std::size_t size = 0;
  for (notNull(units); units[size] != Char16(); ++size) {
  }
  return checkedSize(size);
}

}  // namespace

/// Head of one allocation; the units and a NUL follow it.
struct String::Buffer {
  std::atomic<Uint32> owners;
  Uint32 size;
  Uint32 capacity;  // the NUL not counted

  static Buffer* make(Uint32 capacity) {
    const std::size_t units = std::size_t{checkedSize(capacity)} + 1;
    auto* buffer =
        new (::operator new(sizeof(Buffer) + units * sizeof(Char16))) Buffer{1, 0, capacity};
    buffer->setSize(0);
    return buffer;
  }

  Char16* units() { return reinterpret_cast<Char16*>(this + 1); }

  void setSize(Uint32 newSize) {
    size = newSize;
    units()[size] = Char16();
  }
};

constexpr String String::EMPTY;  // not just constinit: g++ would still destroy it at exit

String::String(const String& other) : buffer_(other.buffer_) {
  if (buffer_ != nullptr) buffer_->owners.fetch_add(1, std::memory_order_relaxed);
}

String::String(const String& other, Uint32 count) : String() {
  requireRange(count <= other.size());
  append(other.getChar16Data(), count);
}

String::String(const Char16* units) : String(units, lengthOf(units)) {}

String::String(const Char16* units, Uint32 count) : String() { append(units, count); }

String::String(const char* text) : String(text, lengthOf(text)) {}

String::String(const char* text, Uint32 count) : String() {
  notNull(text);
  if (count != 0) {
    buffer_ = Buffer::make(count);
    buffer_->setSize(utf8::decode(text, count, buffer_->units()));
  }
}

void String::release(Buffer* buffer) {
  if (buffer->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    buffer->~Buffer();
    ::operator delete(buffer);
  }
}

String& String::operator=(const String& other) {
  String copy(other);
  std::swap(buffer_, copy.buffer_);
  return *this;
}

String& String::assign(const String& other) { return *this = other; }
String& String::assign(const Char16* units) { return *this = String(units); }
String& String::assign(const Char16* units, Uint32 count) { return *this = String(units, count); }
String& String::assign(const char* text) { return *this = String(text); }
String& String::assign(const char* text, Uint32 count) { return *this = String(text, count); }

/// Makes the buffer this text's own, with room for `capacity` units. Returns the text on the buffer
/// that it replaced, if it did: what the caller is about to copy may lie in there.
String String::makeRoom(Uint32 capacity) {
  String replaced;
  const bool fits = buffer_ != nullptr && buffer_->capacity >= capacity &&
                    buffer_->owners.load(std::memory_order_acquire) == 1;
  if (!fits) {
    const Uint32 needed = std::max({checkedSize(capacity), size(), minCapacity});
    replaced.buffer_ = Buffer::make(std::min(std::bit_ceil(needed), maxCapacity));
    std::memcpy(replaced.buffer_->units(), getChar16Data(), size() * sizeof(Char16));
    replaced.buffer_->setSize(size());
    std::swap(buffer_, replaced.buffer_);
  }
  return replaced;
}

String& String::append(const Char16& unit) { return append(&unit, 1); }

String& String::append(const Char16* units, Uint32 count) {
  notNull(units);
  if (count != 0) {
    const Uint32 before = size();
    const String replaced = makeRoom(checkedSize(std::size_t{before} + checkedSize(count)));
    std::memmove(buffer_->units() + before, units, count * sizeof(Char16));
    buffer_->setSize(before + count);
  }
  return *this;
}

String& String::append(const String& other) { return append(other.getChar16Data(), other.size()); }

void String::appendPrintf(const char* format, ...) {
  notNull(format);
  std::va_list arguments;
  va_start(arguments, format);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): clang-tidy 14 errs when given many files.
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  std::vector<char> bytes(static_cast<std::size_t>(std::max(length, 0)) + 1);
  va_start(arguments, format);
  std::vsnprintf(bytes.data(), bytes.size(), format, arguments);
  va_end(arguments);
  append(String(bytes.data(), checkedSize(bytes.size() - 1)));
}

void String::clear() { *this = EMPTY; }

void String::reserveCapacity(Uint32 capacity) {
  if (buffer_ == nullptr || capacity > buffer_->capacity) makeRoom(capacity);
}

void String::remove(Uint32 index, Uint32 count) {
  requireRange(index <= size());
  const Uint32 behind = size() - index;
  const Uint32 removed = count == PEG_NOT_FOUND ? behind : count;
  requireRange(removed <= behind);
  if (removed != 0) {
    makeRoom(size());
    Char16* gap = buffer_->units() + index;
    std::memmove(gap, gap + removed, (behind - removed) * sizeof(Char16));
    buffer_->setSize(size() - removed);
  }
}

Uint32 String::size() const { return buffer_ != nullptr ? buffer_->size : 0; }

const Char16* String::getChar16Data() const {
  return buffer_ != nullptr ? buffer_->units() : noUnits;
}

Char16& String::operator[](Uint32 index) {
  requireRange(index <= size());
  makeRoom(size());
  return buffer_->units()[index];
}

const Char16 String::operator[](Uint32 index) const {
  requireRange(index <= size());
  return getChar16Data()[index];
}

String String::subString(Uint32 index, Uint32 count) const {
  if (index >= size()) return String();
  return String(getChar16Data() + index, std::min(count, size() - index));
}

String operator+(const String& a, const String& b) {
  String both;
  both.reserveCapacity(checkedSize(std::size_t{a.size()} + b.size()));
  return both.append(a).append(b);
}

std::ostream& operator<<(std::ostream& stream, const String& text) {
  for (Uint32 i = 0; i < text.size(); ++i) {
    const Uint32 unit = text[i];
    if (unit != 0 && unit <= 0xFF) {
      stream << static_cast<char>(unit);
    } else {
      stream << '\\' << 'x';
      for (int shift = 12; shift >= 0; shift -= 4) {
        stream << "0123456789ABCDEF"[(unit >> shift) & 0xF];
      }
    }
  }
  return stream;
}

}  // namespace Pegasus
