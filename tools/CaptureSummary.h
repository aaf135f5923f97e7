// What `rt3 info` says about a capture.
#pragma once

#include <string>

#include "curves/CaptureOutline.h"

/// Several lines for a person, each with a line break, UTF-8. Channels and curves are counted from
/// 1.
std::string DescribeCapture(const std::wstring& strPath, const RTCaptureOutline& capture);

/// One JSON object on one line, without a line break; of a file that is damaged in front of its
/// first complete curve, only the error.
/// @param strError why the file could not be read to its end; empty: it could
std::string DescribeCaptureAsJson(const std::wstring& strPath, const RTCaptureOutline& capture,
                                  const std::wstring& strError);
