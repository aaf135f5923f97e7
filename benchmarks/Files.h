// Files as plainly as a program can write and read them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// @param bToDisk waits until the disk has it
void WriteBytes(const std::wstring& strPath, const std::vector<std::uint8_t>& bytes, bool bToDisk);

/// The file's bytes, in an array of its own.
std::unique_ptr<std::uint8_t[]> ReadBytes(const std::wstring& strPath);

std::vector<std::uint8_t> CopyFile(const std::wstring& strPath);
