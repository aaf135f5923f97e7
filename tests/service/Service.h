// What the tests of the programs that serve an instrument have in common.
#pragma once

#include <string>
#include <vector>

#include "curves/CaptureFile.h"
#include "platform/system/File.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "tests/link/Support.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

/// The image of a start.
inline Bytes MakeStart(unsigned nMilliseconds, unsigned nRate, bool bContinuous = false) {
    Bytes image(44);
    const auto put = [&](std::size_t n, unsigned nValue) {
        image[n] = static_cast<std::uint8_t>(nValue & 0xFF);
        image[n + 1] = static_cast<std::uint8_t>(nValue >> 8);
    };
    image[0] = 39;
    image[1] = 1;
    image[2] = 41;
    image[3] = 2;
    put(4, nMilliseconds);
    image[6] = bContinuous ? 1 : 0;
    put(7, nRate);
    return image;
}

inline const Bytes STOP = MakeStart(0, 0);

/// The command line of rtinstrument.
inline std::vector<std::string> Instrument(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), ToUtf8(GetExecutableFolder()).append("/rtinstrument"));
    return arguments;
}

/// The port that a program prints behind a text.
inline std::uint16_t ReadPort(CChildProgram& program, const std::string& strBefore) {
    const std::string strPort = program.Await(strBefore);
    return static_cast<std::uint16_t>(strPort.empty() ? 0 : std::stoi(strPort));
}

/// The command line of a panel that demonstrates an instrument on a link, into a folder of the
/// name.
inline std::vector<std::string> Demo(const TemporaryFolder& folder, const std::string& strName,
                                     const std::string& strAddress,
                                     const std::vector<std::string>& more = {}) {
    const std::string strFolder = folder.GetPath() / strName;
    std::filesystem::create_directory(strFolder);
    std::vector<std::string> arguments = {
        ToUtf8(GetExecutableFolder()) + "/rtpanel", "--link=" + strAddress, "--demo=" + strFolder,
        "--data-folder=" + strFolder, "--settings=" + strFolder + "/settings.ini"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

/// The values of a channel that a demonstration has left there.
inline std::vector<std::int16_t> ReadDemo(const TemporaryFolder& folder, const std::string& strName,
                                          std::size_t nChannel = 0) {
    RTCaptureFile capture;
    CFile file(folder.Path(strName + "/capture.rt3"), CFile::modeRead);
    ReadCapture(file, capture);
    const auto spCurve = capture.m_curves.FirstCurve(nChannel);
    if (!spCurve) return {};
    return {spCurve->GetValues(), spCurve->GetValues() + spCurve->GetCount()};
}
