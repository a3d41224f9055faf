// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptPattern_p.h"

#include <algorithm>

namespace dozely
{

namespace
{
constexpr std::size_t stepsBetweenReports = 128;

bool isBetween(unsigned char byte, char first, char last)
{
    return byte >= static_cast<unsigned char>(first) && byte <= static_cast<unsigned char>(last);
}
bool isLower(unsigned char byte)
{
    return isBetween(byte, 'a', 'z');
}
bool isUpper(unsigned char byte)
{
    return isBetween(byte, 'A', 'Z');
}
bool isDigit(unsigned char byte)
{
    return isBetween(byte, '0', '9');
}
bool isPrintable(unsigned char byte)
{
    return isBetween(byte, '!', '~');
}
bool isAlphanumeric(unsigned char byte)
{
    return isLower(byte) || isUpper(byte) || isDigit(byte);
}

/// Whether the byte belongs to the class "%letter"; an upper-case letter stands for all other bytes.
bool isInClass(unsigned char byte, char letter)
{
    const auto name = static_cast<unsigned char>(letter);
    bool belongs = false;
    switch (isUpper(name) ? letter - 'A' + 'a' : letter) {
    case 'a':
        belongs = isLower(byte) || isUpper(byte);
        break;
    case 'c':
        belongs = byte < 0x20 || byte == 0x7f;
        break;
    case 'd':
        belongs = isDigit(byte);
        break;
    case 'g':
        belongs = isPrintable(byte);
        break;
    case 'l':
        belongs = isLower(byte);
        break;
    case 'p':
        belongs = isPrintable(byte) && !isAlphanumeric(byte);
        break;
    case 's':
        belongs = byte == ' ' || isBetween(byte, '\t', '\r');
        break;
    case 'u':
        belongs = isUpper(byte);
        break;
    case 'w':
        belongs = isAlphanumeric(byte);
        break;
    case 'z':
        belongs = byte == 0;
        break; // the older spelling of "%\0"
    case 'x':
        belongs = isDigit(byte) || isBetween(byte, 'a', 'f') || isBetween(byte, 'A', 'F');
        break;
    default:
        return byte == name; // "%." is the point itself
    }
    return belongs != isUpper(name);
}
} // namespace

/// Counts the recursion while it lives.
class ScriptPattern::Depth
{
public:
    explicit Depth(int &depth) : m_depth(depth)
    {
        if (m_depth >= maximumDepth)
            throw Error{"pattern too complex"};
        ++m_depth;
    }
    ~Depth() { --m_depth; }
    Depth(const Depth &) = delete;
    Depth &operator=(const Depth &) = delete;

private:
    int &m_depth;
};

ScriptPattern::ScriptPattern(std::string_view subject, std::string_view pattern,
                             std::function<void(std::size_t)> spend)
    : m_subject(subject),
      m_pattern(pattern),
      m_spend(std::move(spend)),
      m_isAnchored(pattern.starts_with('^'))
{
}

void ScriptPattern::ignoreAnchor()
{
    m_isAnchored = false;
}

std::optional<std::size_t> ScriptPattern::matchAt(std::size_t start)
{
    m_captureCount = 0;
    m_depth = 0;
    return match(start, m_isAnchored ? 1 : 0);
}

const ScriptPattern::Capture &ScriptPattern::capture(std::size_t index) const
{
    if (m_captures.at(index).kind == Capture::Kind::Open)
        throw Error{"unfinished capture"};
    return m_captures.at(index);
}

void ScriptPattern::step(std::size_t count)
{
    m_steps += count;
    if (m_steps < stepsBetweenReports)
        return;
    const std::size_t done = m_steps;
    m_steps = 0;
    m_spend(done);
}

/// A byte of the pattern; NUL beyond its end, where callers look for a suffix.
char ScriptPattern::at(std::size_t position) const
{
    return position < m_pattern.size() ? m_pattern[position] : '\0';
}

/// Where the single-byte item that begins at `item` ends.
std::size_t ScriptPattern::itemEnd(std::size_t item)
{
    const char first = m_pattern[item++];
    if (first == '%') {
        if (item >= m_pattern.size())
            throw Error{"malformed pattern (ends with '%')"};
        return item + 1;
    }
    if (first != '[')
        return item;
    if (at(item) == '^')
        ++item;
    // A bracket at the very start of a set belongs to it.
    for (bool isFirst = true; isFirst || at(item) != ']'; isFirst = false) {
        step();
        if (item < m_pattern.size() && m_pattern[item] == '%')
            ++item;
        if (++item > m_pattern.size() || item == m_pattern.size())
            throw Error{"malformed pattern (missing ']')"};
    }
    return item + 1;
}

bool ScriptPattern::isInSet(unsigned char byte, std::size_t item, std::size_t end)
{
    const std::size_t last = end - 1; // the closing bracket
    std::size_t place = item + 1;
    const bool isComplement = at(place) == '^';
    if (isComplement)
        ++place;
    for (; place < last; ++place) {
        step();
        const char entry = m_pattern[place];
        if (entry == '%') {
            if (isInClass(byte, m_pattern[++place]))
                return !isComplement;
        } else if (at(place + 1) == '-' && place + 2 < last) {
            if (byte >= static_cast<unsigned char>(entry) &&
                byte <= static_cast<unsigned char>(m_pattern[place + 2]))
                return !isComplement;
            place += 2;
        } else if (static_cast<unsigned char>(entry) == byte) {
            return !isComplement;
        }
    }
    return isComplement;
}

bool ScriptPattern::matchesItem(std::size_t position, std::size_t item, std::size_t end)
{
    step();
    if (position >= m_subject.size())
        return false;
    const auto byte = static_cast<unsigned char>(m_subject[position]);
    switch (m_pattern[item]) {
    case '.':
        return true;
    case '%':
        return isInClass(byte, m_pattern[item + 1]);
    case '[':
        return isInSet(byte, item, end);
    default:
        return static_cast<unsigned char>(m_pattern[item]) == byte;
    }
}

/// Matches the pattern from `item` on at `position`; the end of the match.
ScriptPattern::Position ScriptPattern::match(std::size_t position, std::size_t item)
{
    const Depth depth(m_depth);
    while (item < m_pattern.size()) {
        step();
        const char first = m_pattern[item];
        const char second = at(item + 1);
        if (first == '(')
            return second == ')' ? openCapture(position, item + 2, Capture::Kind::Position)
                                 : openCapture(position, item + 1, Capture::Kind::Open);
        if (first == ')')
            return closeCapture(position, item + 1);
        if (first == '$' && item + 1 == m_pattern.size())
            return position == m_subject.size() ? Position(position) : Position();
        if (first == '%' && (second == 'b' || (second >= '0' && second <= '9'))) {
            const Position after = second == 'b' ? balanced(position, item + 2) : repeated(position, second);
            if (!after)
                return {};
            position = *after;
            item += second == 'b' ? 4 : 2;
            continue;
        }
        if (first == '%' && second == 'f') {
            if (at(item + 2) != '[')
                throw Error{"missing '[' after '%f' in pattern"};
            const std::size_t end = itemEnd(item + 2);
            if (!isFrontier(position, item + 2, end))
                return {};
            item = end;
            continue;
        }
        const std::size_t end = itemEnd(item);
        const char suffix = at(end);
        if (suffix == '*')
            return matchMany(position, item, end);
        if (suffix == '-')
            return matchFew(position, item, end);
        const bool isMatch = matchesItem(position, item, end);
        if (suffix == '+')
            return isMatch ? matchMany(position + 1, item, end) : Position();
        if (suffix == '?') {
            if (isMatch) {
                if (const Position found = match(position + 1, end + 1))
                    return found;
            }
            item = end + 1;
            continue;
        }
        if (!isMatch)
            return {};
        ++position;
        item = end;
    }
    return position;
}

/// As many of the item as there are, then fewer and fewer until the rest of the pattern matches.
ScriptPattern::Position ScriptPattern::matchMany(std::size_t position, std::size_t item, std::size_t end)
{
    std::size_t count = 0;
    while (matchesItem(position + count, item, end))
        ++count;
    while (true) {
        if (const Position found = match(position + count, end + 1))
            return found;
        if (count-- == 0)
            return {};
    }
}

/// As few of the item as the rest of the pattern allows.
ScriptPattern::Position ScriptPattern::matchFew(std::size_t position, std::size_t item, std::size_t end)
{
    while (true) {
        if (const Position found = match(position, end + 1))
            return found;
        if (!matchesItem(position, item, end))
            return {};
        ++position;
    }
}

ScriptPattern::Position ScriptPattern::openCapture(std::size_t position, std::size_t item, Capture::Kind kind)
{
    if (m_captureCount >= maximumCaptures)
        throw Error{"too many captures"};
    m_captures.at(m_captureCount++) = {position, 0, kind};
    const Position found = match(position, item);
    if (!found)
        --m_captureCount;
    return found;
}

ScriptPattern::Position ScriptPattern::closeCapture(std::size_t position, std::size_t item)
{
    for (std::size_t index = m_captureCount; index-- > 0;) {
        Capture &capture = m_captures.at(index);
        if (capture.kind != Capture::Kind::Open)
            continue;
        capture.kind = Capture::Kind::Text;
        capture.length = position - capture.start;
        const Position found = match(position, item);
        if (!found)
            m_captures.at(index).kind = Capture::Kind::Open;
        return found;
    }
    throw Error{"invalid pattern capture"};
}

/// "%bxy": from an x to the y that balances it. `item` is the place of x.
ScriptPattern::Position ScriptPattern::balanced(std::size_t position, std::size_t item)
{
    if (item + 1 >= m_pattern.size())
        throw Error{"malformed pattern (missing arguments to '%b')"};
    if (position >= m_subject.size() || m_subject[position] != m_pattern[item])
        return {};
    std::size_t level = 1;
    for (std::size_t place = position + 1; place < m_subject.size(); ++place) {
        step();
        if (m_subject[place] == m_pattern[item + 1]) {
            if (--level == 0)
                return place + 1;
        } else if (m_subject[place] == m_pattern[item]) {
            ++level;
        }
    }
    return {};
}

/// "%1" and its kind: the text of an earlier capture again.
ScriptPattern::Position ScriptPattern::repeated(std::size_t position, char digit)
{
    const auto index = static_cast<std::size_t>(digit - '1');
    if (digit == '0' || index >= m_captureCount || m_captures.at(index).kind == Capture::Kind::Open)
        throw Error{std::string("invalid capture index %") + digit};
    const Capture &capture = m_captures.at(index);
    if (capture.kind == Capture::Kind::Position)
        return {}; // a place is no text that could be there again
    step(capture.length);
    const std::string_view text = m_subject.substr(capture.start, capture.length);
    return m_subject.substr(position).starts_with(text) ? Position(position + text.size()) : Position();
}

/// Whether the set begins here: the byte before is not in it, this one is; NUL stands beyond both ends.
bool ScriptPattern::isFrontier(std::size_t position, std::size_t set, std::size_t end)
{
    const auto byteAt = [this](std::size_t place) {
        return place < m_subject.size() ? static_cast<unsigned char>(m_subject[place]) : '\0';
    };
    const unsigned char before = position == 0 ? '\0' : byteAt(position - 1);
    return !isInSet(before, set, end) && isInSet(byteAt(position), set, end);
}

} // namespace dozely
