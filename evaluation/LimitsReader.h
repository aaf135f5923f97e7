// Reading the values of a limits file, each with its place for errors.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "evaluation/Json.h"
#include "evaluation/Scales.h"

/// A value of the file and the keys that lead to it. Borrows the value. What reads refuses what is
/// not as wanted, by a CLimitsError that says the file, the place and the reason.
class CLimitsNode {
  public:
    /// The whole file.
    CLimitsNode(const Json& value, std::string strFile);

    /// Errors of this, and of what it holds, say a name behind their place.
    void SetName(const std::string& strName) { m_strName = strName; }

    bool IsNull() const { return m_pValue->is_null(); }
    bool Has(const char* pKey) const { return m_pValue->contains(pKey); }
    CLimitsNode Get(const char* pKey) const;   ///< of an object
    CLimitsNode At(std::size_t nIndex) const;  ///< of a list

    void RequireObject() const;
    /// Refuses what is no object, and any other key.
    void RequireKeys(std::span<const std::string_view> keys) const;
    /// The number of entries of a list.
    std::size_t CountEntries(std::size_t nLeast, std::size_t nMost) const;
    /// @param nLeast, nMost characters
    std::string ReadText(std::size_t nLeast, std::size_t nMost) const;
    double ReadNumber() const;
    double ReadNumber(double dMin, double dMax) const;
    std::size_t ReadWhole(std::size_t nMin, std::size_t nMax) const;
    /// The index of one of several texts.
    std::size_t ReadChoice(std::span<const std::string_view> choices) const;
    /// A coordinate, and a width of 0 or more.
    Grid ReadGrid(const Scale& scale) const;
    Grid ReadWidth(const Scale& scale) const;

    [[noreturn]] void Refuse(const std::string& strReason) const;
    /// The value as the file has it, shortened.
    std::string Quote() const;

  private:
    CLimitsNode() = default;
    CLimitsNode Child(const Json& value, const std::string& strStep) const;
    [[noreturn]] void RefuseBeyond() const;

    const Json* m_pValue = nullptr;
    std::string m_strFile;
    std::string m_strPath;
    std::string m_strName;
};
