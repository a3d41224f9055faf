// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace dozely
{

/// Matches a pattern of the script language against a text, both as bytes; letters and digits are those of
/// ASCII.
class ScriptPattern
{
public:
    /// Why a pattern is none; a sentence for the script.
    struct Error {
        std::string text;
    };

    static constexpr std::size_t maximumCaptures = 32;
    static constexpr int maximumDepth = 200; ///< Of the recursion that tries alternatives.

    struct Capture {
        enum class Kind { Open, Text, Position };
        std::size_t start = 0;
        std::size_t length = 0;
        Kind kind = Kind::Open;
    };

    /// Neither text is copied. `spend` is told the steps done now and then, and may throw.
    ScriptPattern(std::string_view subject, std::string_view pattern, std::function<void(std::size_t)> spend);

    /// Whether the pattern is tied to the start of the text.
    bool isAnchored() const { return m_isAnchored; }
    /// Takes a leading "^" as a byte like others.
    void ignoreAnchor();

    /// The end of a match that begins at exactly `start`, or none. Throws Error, and what `spend` throws.
    std::optional<std::size_t> matchAt(std::size_t start);

    /// The captures of the last match.
    std::size_t captureCount() const { return m_captureCount; }
    /// Throws Error for one that was never closed.
    const Capture &capture(std::size_t index) const;

private:
    using Position = std::optional<std::size_t>;
    class Depth;

    void step(std::size_t count = 1);
    char at(std::size_t position) const;
    std::size_t itemEnd(std::size_t item);
    bool matchesItem(std::size_t position, std::size_t item, std::size_t end);
    bool isInSet(unsigned char byte, std::size_t item, std::size_t end);
    Position match(std::size_t position, std::size_t item);
    Position matchMany(std::size_t position, std::size_t item, std::size_t end);
    Position matchFew(std::size_t position, std::size_t item, std::size_t end);
    Position openCapture(std::size_t position, std::size_t item, Capture::Kind kind);
    Position closeCapture(std::size_t position, std::size_t item);
    Position balanced(std::size_t position, std::size_t item);
    Position repeated(std::size_t position, char digit);
    bool isFrontier(std::size_t position, std::size_t set, std::size_t end);

    std::string_view m_subject;
    std::string_view m_pattern;
    std::function<void(std::size_t)> m_spend;
    bool m_isAnchored;
    std::size_t m_steps = 0;
    int m_depth = 0;
    std::size_t m_captureCount = 0;
    std::array<Capture, maximumCaptures> m_captures;
};

} // namespace dozely
