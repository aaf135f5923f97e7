#include "Alternative.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "platform/system/Paths.h"
#include "platform/system/Text.h"

CAlternative::CAlternative(const std::string& strProgram)
    : m_strPath(ToUtf8(JoinPath(GetExecutableFolder(), FromUtf8(strProgram)))) {}

bool CAlternative::IsBuilt() const { return std::filesystem::exists(m_strPath); }

Measure CAlternative::TimePaints(unsigned nCurves, unsigned nValues, PaintView view,
                                 int nPaints) const {
    const std::string strCommand = "'" + m_strPath + "' " + std::to_string(nCurves) + ' ' +
                                   std::to_string(nValues) + ' ' + std::to_string(nPaints) +
                                   (view == PaintView::New ? " new" : " same");
    return [strCommand, nPaints] {
        std::FILE* pOutput = ::popen(strCommand.c_str(), "r");
        if (!pOutput) throw std::runtime_error("cannot run " + strCommand);
        std::vector<double> times;
        for (double dSeconds = 0; std::fscanf(pOutput, "%lf", &dSeconds) == 1;)
            times.push_back(dSeconds);
        if (::pclose(pOutput) != 0 || times.size() != static_cast<std::size_t>(nPaints))
            throw std::runtime_error(strCommand + " has failed");
        return times;
    };
}
