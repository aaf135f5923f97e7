// rt3 run by tests: the real binary in a folder of the test's, and captures for it.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "platform/system/Paths.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"

/// A version-14 curve with a pulse, two markers and extremes of its own; all 0: not computed.
inline FileBytes& AddCurve(FileBytes& bytes, const std::vector<int>& values,
                           const std::vector<int>& extremes = {12, 11, 14, 13}) {
    bytes.Values(values).Pulses({{4, 5}}).Longs({-1, 3, -1, -1, -1, -1, -1, -1, -1, 7});
    return bytes.Words(extremes);
}

inline bool Contains(const std::string& strText, const char* pPart) {
    return strText.find(pPart) != std::string::npos;
}

class ToolRun : public ::testing::Test {
  protected:
    struct Result {
        int m_nExitCode;
        std::string m_strOut;
        std::string m_strErr;
    };
    /// Runs rt3 in the test's folder, through a shell, with the system's reasons in English.
    Result Run(const std::string& strArguments) const {
        const TemporaryFolder output;
        const std::string strCommand =
            "cd '" + m_folder.GetPath().native() + "' && export LC_ALL=C.UTF-8 && IFS= RT3='" +
            ToUtf8(GetExecutableFolder()) + "/rt3' && ( " + strArguments + " ) >'" +
            (output.GetPath() / "out").native() + "' 2>'" + (output.GetPath() / "err").native() +
            "'";
        const int nStatus = std::system(strCommand.c_str());
        return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, output.Get("out"),
                output.Get("err")};
    }

    std::filesystem::path PathOf(const char* pName) const { return m_folder.GetPath() / pName; }

    TemporaryFolder m_folder;
};
