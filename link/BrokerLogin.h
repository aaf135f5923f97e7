// How a program says to a broker who it is.
#pragma once

#include <string>

struct BrokerLogin {
    std::string m_strUser;          ///< empty: nobody in particular
    std::string m_strPasswordFile;  ///< its first line is the password; empty: none
};
