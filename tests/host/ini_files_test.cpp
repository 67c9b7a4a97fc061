#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <fstream>

#include "standins/host/memory/host_text.h"
#include "standins/host/sdk/max.h"
#include "tests/support/temporary_folder.h"

namespace {

using MaxSDK::Util::GetPrivateProfileStringW;
using MaxSDK::Util::WritePrivateProfileStringW;

TEST(IniFiles, AWriteKeepsWhatElseIsThere) {
    const TemporaryFolder folder;
    const std::string path = folder / "\xc3\xa4 settings.ini";
    std::ofstream(std::filesystem::u8path(path), std::ios::binary)
        << ("; mine\n\n[Lights]\n; how many\nSkyLights=0\n; what else\nOther=\"a b\"\n\n"
            "[Elsewhere]\nx=\xc3\xa9\n; the end\n");
    std::wstring host_path = memhost::units_from_utf8(path);
    host_path[host_path.rfind(L'/')] = L'\\';

    wchar_t value[4];
    const auto read = [&](const wchar_t* section, const wchar_t* key, DWORD size = 4) {
        const DWORD length =
            GetPrivateProfileStringW(section, key, L"none", value, size, host_path.c_str());
        EXPECT_EQ(length, std::wcslen(value));
        return std::wstring(value);
    };
    EXPECT_EQ(read(L"lights", L"skylights"), L"0");
    EXPECT_EQ(read(L"Elsewhere", L"x"), L"\u00e9");
    EXPECT_EQ(read(L"Lights", L"Missing"), L"non");

    EXPECT_TRUE(WritePrivateProfileStringW(L"Lights", L"SkyLights", L"1", host_path.c_str()));
    EXPECT_TRUE(WritePrivateProfileStringW(L"Curves", L"Hair", L"\u00fc", host_path.c_str()));
    std::string text = file_contents(path);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    EXPECT_EQ(text,
              "; mine\n\n\n[Lights]\n\n; how many\nSkyLights=1\n\n; what else\nOther=\"a b\"\n\n\n"
              "[Elsewhere]\nx=\xc3\xa9\n\n\n[Curves]\nHair=\xc3\xbc\n; the end\n");
}

}  // namespace
