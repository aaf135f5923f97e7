// Marks what the platform library offers to the host, the plug-in and the sibling libraries.
#pragma once

#define PLATFORM_API __attribute__((visibility("default")))
