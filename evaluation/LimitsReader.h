// Reading the values of a limits file, each with the path of its key for errors.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "evaluation/Grid.h"
#include "evaluation/Json.h"

/// A value of the file and where it stands: the object behind which its name is said, and the keys
/// from the beginning. Borrows the value.
class CLimitsNode {
  public:
    /// The whole file.
    CLimitsNode(const Json& value, std::string strFile);

    /// Refuses what is no object, and keys that are none of those given.
    void RequireKeys(std::initializer_list<std::string_view> keys) const;

    bool Has(const char* pKey) const { return m_pValue->contains(pKey); }
    /// A key that is needed.
    CLimitsNode Get(const char* pKey) const;
    CLimitsNode At(std::size_t nIndex) const;
    /// Says a name behind the path of this and what it holds.
    void SetName(const std::string& strName) { m_strName = strName; }

    bool IsNull() const { return m_pValue->is_null(); }
    /// @return how many entries a list has
    std::size_t CountEntries(std::size_t nLeast, std::size_t nMost) const;
    std::string ReadText(std::size_t nLeast, std::size_t nMost) const;
    double ReadNumber() const;
    double ReadNumber(double dMin, double dMax) const;
    std::size_t ReadWhole(std::size_t nMin, std::size_t nMax) const;
    /// @return the index of the text among those that it may be
    std::size_t ReadChoice(std::initializer_list<std::string_view> choices) const;
    template <class Choices>
    std::size_t ReadChoiceOf(const Choices& choices) const {
        return FindChoice(choices.begin(), choices.end());
    }

    /// @throws CLimitsError
    [[noreturn]] void Refuse(const std::string& strReason) const;
    /// The value as the file has it, shortened.
    std::string Quote() const;

  private:
    CLimitsNode() = default;
    CLimitsNode Child(const Json& value, const std::string& strStep) const;
    std::size_t FindChoice(const std::string_view* pFirst, const std::string_view* pEnd) const;

    const Json* m_pValue = nullptr;
    std::string m_strFile;
    std::string m_strPath;
    std::string m_strName;
};
