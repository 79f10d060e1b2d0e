#pragma once

#include <algorithm>
#include <array>
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
  static constexpr size_t kMost = 12;

  /** Plain words, numbered by their place. */
  template <class... Texts>
  requires(std::convertible_to<Texts, std::string_view>&&...) constexpr explicit Words(const Texts&... texts) {
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

  [[nodiscard]] constexpr const Word* begin() const { return m_words.data(); }
  [[nodiscard]] constexpr const Word* end() const { return m_words.data() + m_count; }
  [[nodiscard]] constexpr bool empty() const { return m_count == 0; }

 private:
  constexpr void add(Word word) { m_words[m_count++] = word; }

  std::array<Word, kMost> m_words{};
  size_t m_count = 0;
};
