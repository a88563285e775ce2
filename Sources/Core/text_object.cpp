#include "slider_document.h"

#include <algorithm>

namespace vireonix::core::slider {

TextObject::TextObject(std::initializer_list<Entry> entries) {
  for (const auto& [key, value] : entries)
    set(key, value);
}

void TextObject::set(std::string_view key, std::string_view value) {
  for (std::size_t i = 0; i < places_.size(); ++i) {
    if (at(i).first == key)
      return replaceValue(i, value);
  }
  places_.push_back({.start = static_cast<std::uint32_t>(characters_.size()),
                     .keySize = static_cast<std::uint32_t>(key.size()),
                     .valueSize = static_cast<std::uint32_t>(value.size())});
  characters_ += key;
  characters_ += value;
}

void TextObject::reserve(std::size_t keys, std::size_t characters) {
  places_.reserve(keys);
  characters_.reserve(characters);
}

std::optional<std::string_view> TextObject::find(std::string_view key) const {
  for (std::size_t i = 0; i < places_.size(); ++i) {
    const Entry entry = at(i);
    if (entry.first == key)
      return entry.second;
  }
  return std::nullopt;
}

TextObject::Entry TextObject::at(std::size_t index) const {
  const Place& place = places_[index];
  const std::string_view all = characters_;
  return {all.substr(place.start, place.keySize),
          all.substr(place.start + place.keySize, place.valueSize)};
}

// What stands behind moves.
void TextObject::replaceValue(std::size_t index, std::string_view value) {
  Place& place = places_[index];
  characters_.replace(place.start + place.keySize, place.valueSize, value);
  const auto growth = static_cast<std::uint32_t>(value.size()) - place.valueSize;
  place.valueSize += growth;
  std::for_each(places_.begin() + static_cast<std::ptrdiff_t>(index) + 1, places_.end(),
                [growth](Place& later) { later.start += growth; });
}

} // namespace vireonix::core::slider
