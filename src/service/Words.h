#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/** A word that a node or a selector takes, and the number that stands for it elsewhere (by default its place). */
struct Word {
  std::string_view text;
  int32_t number = 0;
};

/** A closed list of words, compared exactly. */
class Words {
 public:
  static constexpr size_t kMost = 10;

  constexpr Words() = default;
  /** Plain words, numbered by their place. */
  template <std::convertible_to<std::string_view>... Texts>
  requires(sizeof...(Texts) > 0) constexpr explicit Words(const Texts&... texts) {
    static_assert(sizeof...(texts) <= kMost);
    (add({texts, static_cast<int32_t>(m_count)}), ...);
  }
  /** Words with numbers of their own: Words{Word{"jpeg", 2}, Word{"mpeg4", 3}}. */
  template <std::same_as<Word>... Pairs>
  requires(sizeof...(Pairs) > 0) constexpr explicit Words(Pairs... words) {
    static_assert(sizeof...(words) <= kMost);
    (add(words), ...);
  }

  /** The number of the word, or none. */
  [[nodiscard]] constexpr std::optional<int32_t> find(std::string_view text) const {
    for (const Word& word : *this) {
      if (word.text == text) return word.number;
    }
    return std::nullopt;
  }
  /** The first word of the number; empty where there is none. */
  [[nodiscard]] constexpr std::string_view text(int32_t number) const {
    for (const Word& word : *this) {
      if (word.number == number) return word.text;
    }
    return {};
  }

  [[nodiscard]] constexpr const Word* begin() const { return m_words.data(); }
  [[nodiscard]] constexpr const Word* end() const { return m_words.data() + m_count; }
  [[nodiscard]] constexpr bool empty() const { return m_count == 0; }

 private:
  constexpr void add(Word word) { m_words[m_count++] = word; }

  std::array<Word, kMost> m_words{};
  size_t m_count = 0;
};
