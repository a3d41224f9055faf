// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>
#include <variant>

namespace dozely
{

/// Why something failed.
struct Error {
    QString text; ///< For a person: one clause without a full stop, as a log line continues with it.
    QByteArray name =
        {}; ///< For code that must tell cases apart, a bus's error name for example; else empty.
};

/// What a function returns that may fail and whose caller wants to know why: a value or an Error.
///
///     const Result<QByteArray> content = readRegularFile(path, limit);
///     if (!content)
///         return content.error();
///     use(*content);
///
/// Both conversions are implicit, so that `return value;` and `return Error{text};` are all that a function
/// writes. Reading the value of a failure, or the error of a success, raises std::bad_variant_access.
template<typename T>
class [[nodiscard]] Result
{
public:
    Result(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_content(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return m_content.index() == 0; }
    explicit operator bool() const { return ok(); }

    const T &value() const & { return std::get<0>(m_content); }
    T &value() & { return std::get<0>(m_content); }
    T &&value() && { return std::get<0>(std::move(m_content)); }
    const T &operator*() const & { return value(); }
    T &operator*() & { return value(); }
    T &&operator*() && { return std::move(*this).value(); }
    const T *operator->() const { return &value(); }
    T *operator->() { return &value(); }

    const Error &error() const { return std::get<1>(m_content); }

private:
    std::variant<T, Error> m_content;
};

/// The same for what gives no value: `return Result<void>();` or simply `return {};` is success.
template<>
class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    bool ok() const { return !m_error.has_value(); }
    explicit operator bool() const { return ok(); }

    const Error &error() const { return m_error.value(); }

private:
    std::optional<Error> m_error;
};

} // namespace dozely
