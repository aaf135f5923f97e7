// What an error says.
#pragma once

#include <string>

/// The text of the Error that an action ends with.
template <class Error>
std::string ErrorOf(const auto& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return "no error";
}
