#pragma once

#include <utility>

namespace bridge::applescript {

// Gives a variable another value for as long as it lives.
template <typename T> class Instead {
public:
    Instead(T& variable, T value) : m_variable(variable), m_before(std::exchange(variable, std::move(value))) {}
    Instead(const Instead&) = delete;
    Instead& operator=(const Instead&) = delete;
    ~Instead() { m_variable = std::move(m_before); }

private:
    T& m_variable;
    T m_before;
};

} // namespace bridge::applescript
