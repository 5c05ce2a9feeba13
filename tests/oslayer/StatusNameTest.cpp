#include <oslayer/statusName.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using oslayer::statusName;

struct Row {
    std::uint32_t code;
    std::wstring_view name;
};

const Row table[] = {
#include <oslayer/StatusNames.inc>
};

std::wstring_view nameOf(std::uint32_t code) {
    return statusName(code);
}

TEST(StatusName, TheTableHas3116NamesFor4897Codes) {
    std::set<std::wstring_view> names;
    for (const Row& row : table) {
        names.insert(row.name);
    }
    EXPECT_EQ(names.size(), 3116U);
    EXPECT_EQ(std::size(table), 4897U);
}

TEST(StatusName, NoCodeAppearsTwice) {
    std::set<std::uint32_t> codes;
    for (const Row& row : table) {
        EXPECT_TRUE(codes.insert(row.code).second) << std::hex << row.code;
    }
}

TEST(StatusName, EveryCodeOfTheTableIsFound) {
    for (const Row& row : table) {
        ASSERT_EQ(nameOf(row.code), row.name) << std::hex << row.code;
    }
}

TEST(StatusName, EveryFamilyHasItsNumberOfNames) {
    const std::map<std::wstring_view, std::size_t> expected = {
        {L"ERROR", 1469},  {L"RPC", 165}, {L"DDERR", 113},  {L"CO", 108},   {L"COMADMIN", 104}, {L"DNS", 92},
        {L"CRYPT", 71},    {L"SEC", 67},  {L"SPAPI", 66},   {L"SCARD", 59}, {L"STG", 54},       {L"OSS", 46},
        {L"WINCODEC", 39}, {L"NTE", 37},  {L"CERTSRV", 36}, {L"WSA", 29},   {L"D3DERR", 28},    {L"D2DERR", 28},
        {L"TYPE", 26},     {L"OLE", 24},  {L"MK", 24},      {L"SCHED", 23}, {L"MSSIPOTF", 22},  {L"DXGI", 22},
        {L"DIERR", 22},    {L"DISP", 18}, {L"CERT", 18},    {L"FRS", 17},   {L"DSERR", 16},     {L"TRUST", 15},
        {L"CONTEXT", 13},  {L"CS", 12},   {L"E", 11},       {L"REGDB", 10}, {L"DXUTERR", 10},   {L"DV", 10},
        {L"CONVERT10", 10}};
    std::set<std::wstring_view> names;
    for (const Row& row : table) {
        names.insert(row.name);
    }
    std::map<std::wstring_view, std::size_t> counted;
    for (const std::wstring_view name : names) {
        ++counted[name.substr(0, name.find(L'_'))];
    }
    for (const auto& [family, count] : expected) {
        EXPECT_EQ(counted[family], count) << std::string(family.begin(), family.end());
    }
}

TEST(StatusName, TellingCodesHaveTheirNames) {
    const Row rows[] = {
        {0x80004001, L"E_NOTIMPL"},
        {0x80004005, L"E_FAIL"},
        {0x8000000A, L"E_PENDING"},
        {0x80040154, L"REGDB_E_CLASSNOTREG"},
        {0x80010001, L"RPC_E_CALL_REJECTED"},
        {0x887A0001, L"DXGI_ERROR_INVALID_CALL"},
        {0x887A0005, L"DXGI_ERROR_DEVICE_REMOVED"},
        {0x887A0007, L"DXGI_ERROR_DEVICE_RESET"},
        {0x88990001, L"D2DERR_WRONG_STATE"},
        {0x8899000C, L"D2DERR_RECREATE_TARGET"},
        {0x88985000, L"DWRITE_E_FILEFORMAT"},
        {0x88985001, L"DWRITE_E_UNEXPECTED"},
        {0x88982F04, L"WINCODEC_ERR_WRONGSTATE"},
        {0x8876086C, L"D3DERR_INVALIDCALL"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(nameOf(row.code), row.name) << std::hex << row.code;
    }
}

TEST(StatusName, ValuesThatSeveralHeadersDefineHaveAllNamesJoined) {
    std::vector<std::uint32_t> joined;
    for (const Row& row : table) {
        if (row.name.find(L" & ") != std::wstring_view::npos) {
            joined.push_back(row.code);
        }
    }
    std::vector<std::uint32_t> expected;
    for (std::uint32_t code = 0x80040200; code <= 0x8004020B; ++code) {
        expected.push_back(code);
    }
    expected.push_back(0x80040401);
    EXPECT_EQ(joined, expected);

    EXPECT_EQ(nameOf(0x80040201), L"DIERR_DEVICEFULL & VFW_E_INVALIDSUBTYPE & DMO_E_INVALIDSTREAMINDEX");
    EXPECT_EQ(nameOf(0x8004020B), L"DIERR_MAPFILEFAIL & VFW_E_RUNTIME_ERROR");
    EXPECT_EQ(nameOf(0x80040401), L"DIERR_CANCELLED & MS_E_SAMPLEALLOC");
}

constexpr std::uint32_t win32Facility = 0x80070000;

bool isBareWin32Error(const Row& row) {
    return row.code <= 0xFFFF && row.name != L"S_OK" && row.name != L"S_FALSE";
}

/// The general results whose values are HRESULT forms of Win32 errors.
bool isGeneralResult(std::wstring_view name) {
    return name == L"E_ACCESSDENIED" || name == L"E_HANDLE" || name == L"E_OUTOFMEMORY" || name == L"E_INVALIDARG";
}

TEST(StatusName, EveryWin32ErrorHasItsNameAsNumberAndAsHResult) {
    for (const Row& row : table) {
        if (isBareWin32Error(row)) {
            const std::wstring_view name = nameOf(win32Facility | row.code);
            EXPECT_TRUE(name == row.name || isGeneralResult(name)) << std::hex << row.code;
        }
    }
    EXPECT_EQ(nameOf(0x80070002), L"ERROR_FILE_NOT_FOUND");
    EXPECT_EQ(nameOf(0x800700C8), L"ERROR_RING2SEG_MUST_BE_MOVABLE");
    EXPECT_EQ(nameOf(0x800700C9), L"ERROR_RELOC_CHAIN_XEEDS_SEGLIM");
    EXPECT_EQ(nameOf(win32Facility + 10013), L"WSAEACCES");
}

TEST(StatusName, EveryHResultFormHasItsBareNumber) {
    for (const Row& row : table) {
        // 1 is S_FALSE first, ERROR_INVALID_FUNCTION second.
        if (row.code >> 16 == win32Facility >> 16 && !isGeneralResult(row.name) && row.code != (win32Facility | 1)) {
            EXPECT_EQ(nameOf(row.code & 0xFFFF), row.name) << std::hex << row.code;
        }
    }
}

TEST(StatusName, AGeneralNameWinsOverTheHResultFormOfAWin32Error) {
    EXPECT_EQ(nameOf(0xE), L"ERROR_OUTOFMEMORY");
    EXPECT_EQ(nameOf(0x8007000E), L"E_OUTOFMEMORY");
    EXPECT_EQ(nameOf(0x57), L"ERROR_INVALID_PARAMETER");
    EXPECT_EQ(nameOf(0x80070057), L"E_INVALIDARG");
}

TEST(StatusName, SuccessCodesHaveNamesToo) {
    EXPECT_EQ(nameOf(0x0), L"S_OK");
    EXPECT_EQ(nameOf(0x1), L"S_FALSE");
    EXPECT_EQ(nameOf(0x40000), L"OLE_S_FIRST");
    EXPECT_EQ(nameOf(0x087A0001), L"DXGI_STATUS_OCCLUDED");
}

TEST(StatusName, AnUnnamedCodeGivesUnknown) {
    for (const std::uint32_t code : {0x12345678U, 0x88760001U, 0x8898500CU, 0xFFFFFFFFU, 0x7FFFFFFFU}) {
        EXPECT_EQ(nameOf(code), L"Unknown") << std::hex << code;
    }
}

} // namespace
