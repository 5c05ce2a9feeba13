#include <d2d1.h>
#include <dwrite_2.h>
#include <rpc.h>

#include <oslayer/com_ptr.h>

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(PlatformHeaders, TypesHaveThePlatformsWidths) {
    EXPECT_EQ(sizeof(HRESULT) * CHAR_BIT, 32u);
    EXPECT_EQ(sizeof(LONG) * CHAR_BIT, 32u);
    EXPECT_EQ(sizeof(ULONG) * CHAR_BIT, 32u);
    EXPECT_EQ(sizeof(BOOL) * CHAR_BIT, 32u);
    EXPECT_EQ(sizeof(GUID), 16u);
    EXPECT_EQ(sizeof(DWRITE_CLUSTER_METRICS), 8u);
    EXPECT_EQ(sizeof(DWRITE_FONT_METRICS), 20u);
}

TEST(PlatformHeaders, StatusCodesHaveTheirSigns) {
    EXPECT_TRUE(SUCCEEDED(S_OK));
    EXPECT_TRUE(SUCCEEDED(S_FALSE));
    EXPECT_TRUE(FAILED(E_FAIL));
    EXPECT_EQ(static_cast<std::uint32_t>(E_NOT_SUFFICIENT_BUFFER), 0x8007007Au);
    EXPECT_EQ(static_cast<std::uint32_t>(DWRITE_E_NOFONT), 0x88985002u);
    EXPECT_EQ(static_cast<std::uint32_t>(D2DERR_WRONG_STATE), 0x88990001u);
}

TEST(PlatformHeaders, AnInterfacesIdentifierIsThatOfItsTypeAnExpressionAndAPointer) {
    const GUID expected = {0xB859EE5A, 0xD838, 0x4B5B, {0xA2, 0xE8, 0x1A, 0xDC, 0x7D, 0x93, 0xDB, 0x48}};
    IDWriteFactory* factory = nullptr;
    const oslayer::com_ptr<IDWriteFactory> owner;
    EXPECT_EQ(__uuidof(IDWriteFactory), expected);
    EXPECT_EQ(__uuidof(factory), expected);
    EXPECT_EQ(__uuidof(*factory), expected);
    EXPECT_EQ(__uuidof(owner), expected);
    EXPECT_FALSE(__uuidof(IDWriteFactory2) == expected);
}

TEST(PlatformHeaders, AMatrixHasTheNamesOfOlderHeadersToo) {
    D2D1_MATRIX_3X2_F matrix = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(matrix._11, 1.0F);
    EXPECT_EQ(matrix._12, 2.0F);
    EXPECT_EQ(matrix._21, 3.0F);
    EXPECT_EQ(matrix._22, 4.0F);
    EXPECT_EQ(matrix._31, 5.0F);
    EXPECT_EQ(matrix._32, 6.0F);
    matrix._31 = 7;
    EXPECT_EQ(matrix.dx, 7.0F);
    EXPECT_EQ(sizeof matrix, 6 * sizeof(FLOAT));
}

TEST(PlatformHeaders, IdentifiersAreComparedWhole) {
    GUID left = __uuidof(ID2D1Factory);
    EXPECT_TRUE(IsEqualGUID(left, __uuidof(ID2D1Factory)));
    left.Data4[7] = static_cast<UINT8>(left.Data4[7] + 1);
    EXPECT_FALSE(IsEqualIID(left, __uuidof(ID2D1Factory)));
}

} // namespace
