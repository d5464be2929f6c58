#include "postscript/level3/document/JobDate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace quillpress::level3 {

namespace {

constexpr bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

constexpr bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

int numberOf(std::string_view digits) {
  int number = -1;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

struct Date {
  int year = -1;
  int month = -1;
  int day = -1;
  // Empty without a time of day.
  std::vector<int> time;
  std::string zone;

  bool isSensible() const {
    constexpr std::array kDays{31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 1000 || year > 9999 || month < 1 || month > 12) return false;
    if (day < 1 || day > kDays[static_cast<std::size_t>(month - 1)]) return false;
    if (time.empty()) return true;
    return time.size() == 3 && time[0] <= 23 && time[1] <= 59 && time[2] <= 60;
  }

  std::string text() const {
    std::array<char, 80> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "D:%04d%02d%02d", year, month, day);
    std::string result = buffer.data();
    if (time.empty()) return result;
    std::snprintf(buffer.data(), buffer.size(), "%02d%02d%02d", time[0], time[1], time[2]);
    return result + buffer.data() + zone;
  }
};

// "Z", or PDF's form of the "+01:00", "+0100" or "+01'00'" with which `text` begins.
std::string zoneOf(std::string_view text) {
  if (text.starts_with('Z')) return "Z";
  if (text.empty() || (text.front() != '+' && text.front() != '-')) return {};
  std::string digits;
  for (const char character : text.substr(1)) {
    if (isDigit(character)) digits += character;
    if (!isDigit(character) && character != ':' && character != '\'') break;
  }
  if (digits.size() != 4 || numberOf(digits.substr(0, 2)) > 23 || numberOf(digits.substr(2)) > 59) return {};
  return text.front() + digits.substr(0, 2) + "'" + digits.substr(2) + "'";
}

// "19980105", with "101112" or "T101112" behind it and a zone behind that.
Date packedDate(std::string_view text) {
  const auto take = [&text](std::size_t count) {
    const bool isThere =
        text.size() >= count && std::all_of(text.begin(), text.begin() + static_cast<long>(count), isDigit);
    const int number = isThere ? numberOf(text.substr(0, count)) : -1;
    if (isThere) text.remove_prefix(count);
    return number;
  };
  Date date;
  date.year = take(4);
  date.month = take(2);
  date.day = take(2);
  if (text.starts_with('T')) text.remove_prefix(1);
  for (int part = take(2); part >= 0 && date.time.size() < 3; part = take(2)) date.time.push_back(part);
  if (!date.time.empty()) date.time.resize(3, 0);
  date.zone = zoneOf(text);
  return date;
}

// 1 to 12 for a word that begins as an English month does.
int monthOf(std::string_view word) {
  constexpr std::string_view kMonths = "janfebmaraprmayjunjulaugsepoctnovdec";
  if (word.size() < 3) return -1;
  std::string begin(word.substr(0, 3));
  for (char& character : begin) character = static_cast<char>(character | 0x20);
  for (std::size_t place = 0; place < kMonths.size(); place += 3) {
    if (kMonths.substr(place, 3) == begin) return static_cast<int>(place / 3) + 1;
  }
  return -1;
}

// A date in words and numbers, in any order that leaves no doubt.
class LooseDate {
 public:
  explicit LooseDate(std::string_view text) : text_(text) {
    while (place_ < text_.size() && !isBroken_) takePart();
    resolve();
  }

  const Date& date() const { return date_; }

 private:
  void takePart() {
    const char character = text_[place_];
    if (isDigit(character)) {
      takeNumber();
    } else if (isLetter(character)) {
      takeWord();
    } else if (!date_.time.empty() && date_.zone.empty() && isZoneAt(place_)) {
      date_.zone = zoneOf(text_.substr(place_));
      place_ = std::min(text_.find(' ', place_), text_.size());
    } else {
      ++place_;
    }
  }

  // A sign behind a letter joins the parts of a date, as in 5-Jan-1998.
  bool isZoneAt(std::size_t place) const {
    return place > 0 && !isLetter(text_[place - 1]) && !zoneOf(text_.substr(place)).empty();
  }

  void takeNumber() {
    const std::size_t begin = place_;
    while (place_ < text_.size() && isDigit(text_[place_])) ++place_;
    const std::string_view digits = text_.substr(begin, place_ - begin);
    const int number = numberOf(digits);
    const bool isTime =
        (place_ < text_.size() && text_[place_] == ':') || (begin > 0 && text_[begin - 1] == ':');
    if (isTime) {
      date_.time.push_back(number);
      skipFraction();
    } else if (digits.size() == 4 && date_.year < 0) {
      date_.year = number;
      yearIsFirst_ = numbers_.empty();
    } else if (digits.size() <= 2) {
      numbers_.push_back(number);
    } else {
      isBroken_ = true;
    }
  }

  // "10:11:12.345"
  void skipFraction() {
    if (date_.time.size() < 3 || place_ >= text_.size() || text_[place_] != '.') return;
    ++place_;
    while (place_ < text_.size() && isDigit(text_[place_])) ++place_;
  }

  void takeWord() {
    const std::size_t begin = place_;
    while (place_ < text_.size() && isLetter(text_[place_])) ++place_;
    const std::string_view word = text_.substr(begin, place_ - begin);
    if (word == "AM" || word == "am" || word == "PM" || word == "pm") {
      takeHalfOfDay((word[0] | 0x20) == 'p');
    } else if (word == "Z" || word == "UTC" || word == "GMT") {
      date_.zone = "Z";
    } else if (const int month = monthOf(word); month > 0) {
      date_.month = month;
    }
  }

  void takeHalfOfDay(bool isAfternoon) {
    if (date_.time.empty()) return;
    int& hour = date_.time.front();
    isBroken_ = hour < 1 || hour > 12;
    hour = hour % 12 + (isAfternoon ? 12 : 0);
  }

  void resolve() {
    if (date_.time.size() == 2) date_.time.push_back(0);
    if (isBroken_) {
      date_.year = -1;
    } else if (date_.month > 0) {
      if (numbers_.size() == 1) date_.day = numbers_[0];
    } else if (numbers_.size() == 2) {
      resolveNumbers(numbers_[0], numbers_[1]);
    }
  }

  // Behind the year stands the month; before it custom differs from country to country.
  void resolveNumbers(int first, int second) {
    const bool isMonthFirst = yearIsFirst_ || second > 12 || first == second;
    if (!isMonthFirst && first <= 12) return;
    date_.month = isMonthFirst ? first : second;
    date_.day = isMonthFirst ? second : first;
  }

  std::string_view text_;
  std::size_t place_ = 0;
  Date date_;
  std::vector<int> numbers_;
  bool yearIsFirst_ = false;
  bool isBroken_ = false;
};

bool isPacked(std::string_view text) {
  return text.size() >= 8 && std::all_of(text.begin(), text.begin() + 8, isDigit);
}

// What a PDF file's date can say: the years 0 to 9999.
constexpr std::int64_t kFirstSecond = -62'167'219'200;
constexpr std::int64_t kLastSecond = 253'402'300'799;

// Without the C library's time_t, which ends in 2038 where it has 32 bits.
std::string pdfDateOfSeconds(std::int64_t secondsSince1970) {
  const std::chrono::sys_seconds moment{std::chrono::seconds(secondsSince1970)};
  const auto midnight = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day day(midnight);
  const std::chrono::hh_mm_ss<std::chrono::seconds> time(moment - midnight);
  std::array<char, 40> date{};
  const int size =
      std::snprintf(date.data(), date.size(), "D:%04d%02u%02u%02d%02d%02dZ", static_cast<int>(day.year()),
                    static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                    static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                    static_cast<int>(time.seconds().count()));
  return std::string(date.data(), static_cast<std::size_t>(size));
}

}  // namespace

std::optional<std::string> pdfDateOf(std::string_view comment) {
  if (comment.starts_with("D:")) comment.remove_prefix(2);
  const Date date = isPacked(comment) ? packedDate(comment) : LooseDate(comment).date();
  if (!date.isSensible()) return std::nullopt;
  return date.text();
}

std::optional<std::string> pdfDateOfEnvironment() {
  const char* const variable = std::getenv("SOURCE_DATE_EPOCH");
  if (variable == nullptr) return std::nullopt;
  const std::string_view text(variable);
  std::int64_t seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size() || seconds < kFirstSecond ||
      seconds > kLastSecond) {
    return std::nullopt;
  }
  return pdfDateOfSeconds(seconds);
}

}  // namespace quillpress::level3
