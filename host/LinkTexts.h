// What the status strip and the waiting window say of the link, in the operator's language.
#pragma once

#include "host/StripTexts.h"
#include "link/LinkStatus.h"

/// @param strAddress where the link leads to
/// @param bLocked captures are controlled elsewhere
StripField DescribeLink(const LinkStatus& status, const std::wstring& strAddress,
                        bool bLocked = false);
