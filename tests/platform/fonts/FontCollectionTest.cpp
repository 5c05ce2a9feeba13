#include "support/Fonts.h"

#include "fonts/FontSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace platform::test {
namespace {

using oslayer::com_ptr;
using testing::ElementsAre;

constexpr UINT32 noIndex = 0xFFFFFFFF;

std::vector<std::wstring> faceNamesOf(const CFontFamily& family) {
    std::vector<std::wstring> names;
    for (const auto& font : family.fonts()) {
        names.push_back(textAt(*faceNames(*font), 0));
    }
    return names;
}

TEST(FontCollection, FindsAFamilyWithoutRegardToLetterCase) {
    IDWriteFontCollection& collection = CFontCollection::system();
    UINT32 index = noIndex;
    BOOL exists = FALSE;
    EXPECT_EQ(collection.FindFamilyName(L"dEJAVU sANS", &index, &exists), S_OK);
    ASSERT_EQ(exists, TRUE);
    com_ptr<IDWriteFontFamily> found;
    ASSERT_EQ(collection.GetFontFamily(index, &found), S_OK);
    EXPECT_EQ(textAt(*familyNames(*found), 0), L"DejaVu Sans");
}

TEST(FontCollection, AnUnknownNameIsNoFailure) {
    IDWriteFontCollection& collection = CFontCollection::system();
    for (const wchar_t* name : {L"", L"No Such Family", L"DejaVu", L" DejaVu Sans", L"DejaVu Sans "}) {
        UINT32 index = 1;
        BOOL exists = TRUE;
        EXPECT_EQ(collection.FindFamilyName(name, &index, &exists), S_OK);
        EXPECT_EQ(exists, FALSE);
        EXPECT_EQ(index, noIndex);
    }
}

TEST(FontCollection, ANameThatIsNotUtf16IsNotFound) {
    EXPECT_EQ(CFontCollection::system().findFamily(L"\U0001F600"), nullptr);
}

TEST(FontCollection, FindsAFamilyByItsNameInAnotherLanguage) {
    // Name ID 1 for Japanese, as fontTools prints it.
    EXPECT_EQ(CFontCollection::system().findFamily(L"Noto Sans CJK JP"), &family(L"noto sans cjk jp"));
    EXPECT_EQ(dataCollection().findFamily(L"テスト"), dataCollection().findFamily(L"Test Wws"));
    EXPECT_EQ(dataCollection().findFamily(L"PRÜFSCHRIFT"), dataCollection().findFamily(L"Test Wws"));
    EXPECT_NE(dataCollection().findFamily(L"пРОБА"), nullptr);
}

TEST(FontCollection, PastTheEndThereIsNoFamily) {
    IDWriteFontCollection& collection = CFontCollection::system();
    auto* family = reinterpret_cast<IDWriteFontFamily*>(1);
    EXPECT_EQ(collection.GetFontFamily(collection.GetFontFamilyCount(), &family), E_FAIL);
    EXPECT_EQ(family, nullptr);
}

TEST(FontCollection, PastTheEndOfAFamilyThereIsNoFont) {
    CFontFamily& sans = family(L"DejaVu Sans");
    auto* font = reinterpret_cast<IDWriteFont*>(1);
    EXPECT_EQ(sans.GetFont(sans.GetFontCount(), &font), E_FAIL);
    EXPECT_EQ(font, nullptr);
}

TEST(FontCollection, AFamilyGroupsWhatDiffersInWeightStretchAndStyle) {
    EXPECT_THAT(faceNamesOf(family(L"DejaVu Sans")),
                ElementsAre(L"Book", L"Oblique", L"ExtraLight", L"Bold", L"Bold Oblique", L"Condensed",
                            L"Condensed Oblique", L"Condensed Bold", L"Condensed Bold Oblique", L"ExtraLight Oblique"));
    EXPECT_THAT(faceNamesOf(family(L"Liberation Sans")),
                ElementsAre(L"Regular", L"Italic", L"Bold", L"Bold Italic", L"Narrow", L"Narrow Italic", L"Narrow Bold",
                            L"Narrow Bold Italic", L"Oblique", L"Bold Oblique", L"Narrow Oblique",
                            L"Narrow Bold Oblique"));
}

TEST(FontCollection, Win32FamiliesThatAreMereFacesAreNotFound) {
    for (const wchar_t* name : {L"DejaVu Sans Condensed", L"DejaVu Sans Light", L"Liberation Sans Narrow"}) {
        EXPECT_EQ(CFontCollection::system().findFamily(name), nullptr);
    }
}

TEST(FontCollection, FamiliesAreOrderedByName) {
    const auto& families = CFontCollection::system().families();
    ASSERT_GT(families.size(), 100u);
    EXPECT_TRUE(std::is_sorted(families.begin(), families.end(), [](const auto& a, const auto& b) {
        return foldCase(a->names()[0].text) < foldCase(b->names()[0].text);
    }));
}

TEST(FontCollection, TheOrderOfFilesChangesNothing) {
    FontSet set = readFontSet(nullptr);
    ASSERT_GT(set.entries.size(), 100u);
    std::reverse(set.entries.begin(), set.entries.end());
    const CFontCollection reversed(set);
    const auto& families = CFontCollection::system().families();
    ASSERT_EQ(reversed.families().size(), families.size());
    for (std::size_t i = 0; i < families.size(); ++i) {
        EXPECT_EQ(faceNamesOf(*reversed.families()[i]), faceNamesOf(*families[i]));
        EXPECT_EQ(reversed.families()[i]->names()[0].text, families[i]->names()[0].text);
    }
}

TEST(FontCollection, HoldsEveryPinnedFaceOnce) {
    std::set<const CFont*> fonts;
    const auto rows = readTable("faces.tsv");
    for (const auto& row : rows) {
        fonts.insert(&fontOfFile(row[0], std::stoi(row[1])));
    }
    EXPECT_EQ(fonts.size(), rows.size());
    std::size_t real = 0;
    for (const auto& family : CFontCollection::system().families()) {
        real += static_cast<std::size_t>(
            std::count_if(family->fonts().begin(), family->fonts().end(),
                          [](const auto& font) { return font->simulations() == DWRITE_FONT_SIMULATIONS_NONE; }));
    }
    EXPECT_EQ(real, rows.size());
}

TEST(FontCollection, HandsOutTheSameObjectsEachTime) {
    IDWriteFontCollection& collection = CFontCollection::system();
    com_ptr<IDWriteFontFamily> first;
    com_ptr<IDWriteFontFamily> second;
    ASSERT_EQ(collection.GetFontFamily(0, &first), S_OK);
    ASSERT_EQ(collection.GetFontFamily(0, &second), S_OK);
    EXPECT_EQ(static_cast<IDWriteFontFamily*>(first), static_cast<IDWriteFontFamily*>(second));

    CFont& bold = font(L"DejaVu Sans", DWRITE_FONT_WEIGHT_BOLD);
    com_ptr<IDWriteFontFace> face;
    com_ptr<IDWriteFontFace> again;
    ASSERT_EQ(bold.CreateFontFace(&face), S_OK);
    ASSERT_EQ(bold.CreateFontFace(&again), S_OK);
    EXPECT_EQ(static_cast<IDWriteFontFace*>(face), static_cast<IDWriteFontFace*>(again));
    com_ptr<IDWriteFontFamily> own;
    ASSERT_EQ(bold.GetFontFamily(&own), S_OK);
    EXPECT_EQ(static_cast<IDWriteFontFamily*>(own), &family(L"DejaVu Sans"));
}

TEST(FontCollection, EveryObjectHandedOutCarriesAReference) {
    CFontFamily& sans = family(L"DejaVu Sans");
    const ULONG before = sans.AddRef();
    IDWriteFontFamily* handed = nullptr;
    font(L"DejaVu Sans").GetFontFamily(&handed);
    EXPECT_EQ(sans.AddRef(), before + 2);
    handed->Release();
    sans.Release();
    EXPECT_EQ(sans.Release(), before - 1);
}

TEST(FontCollection, AnInternedObjectOutlivesItsReferences) {
    CFont& regular = font(L"Liberation Sans");
    regular.AddRef();
    while (regular.Release() != 0) {
    }
    EXPECT_EQ(regular.weight(), DWRITE_FONT_WEIGHT_NORMAL);
    regular.AddRef();
}

TEST(FontCollection, QueriesKnowTheirOwnInterfacesOnly) {
    CFont& regular = font(L"DejaVu Sans");
    void* object = &object;
    for (const IID* wrong : {&__uuidof(IDWriteFontFamily), &__uuidof(IDWriteFontFace)}) {
        EXPECT_EQ(static_cast<IDWriteFont&>(regular).QueryInterface(*wrong, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
    }
    IDWriteFontFace& face = regular.face();
    EXPECT_EQ(face.QueryInterface(__uuidof(IDWriteFont), &object), E_NOINTERFACE);
    com_ptr<IDWriteFontList> list;
    EXPECT_EQ(static_cast<IDWriteFontFamily&>(family(L"DejaVu Sans"))
                  .QueryInterface(__uuidof(IDWriteFontList), reinterpret_cast<void**>(&list)),
              S_OK);
    EXPECT_EQ(list->GetFontCount(), family(L"DejaVu Sans").fonts().size());
}

TEST(FontCollection, FindsTheFontOfAFace) {
    IDWriteFontCollection& collection = CFontCollection::system();
    CFont& bold = font(L"DejaVu Sans", DWRITE_FONT_WEIGHT_BOLD);
    com_ptr<IDWriteFont> found;
    EXPECT_EQ(collection.GetFontFromFontFace(&bold.face(), &found), S_OK);
    EXPECT_EQ(static_cast<IDWriteFont*>(found), &bold);
}

TEST(FontCollection, AForeignFaceHasNoFont) {
    IDWriteFontCollection& collection = CFontCollection::system();
    auto* found = reinterpret_cast<IDWriteFont*>(1);
    EXPECT_EQ(collection.GetFontFromFontFace(&dataFont("Cff.otf").face(), &found), DWRITE_E_NOFONT);
    EXPECT_EQ(found, nullptr);
}

TEST(FontCollection, TheCollectionBehindAPointerIsTheSystemsUnlessItIsAnotherOfOurs) {
    EXPECT_EQ(&CFontCollection::of(nullptr), &CFontCollection::system());
    EXPECT_EQ(&CFontCollection::of(&CFontCollection::system()), &CFontCollection::system());
    EXPECT_EQ(&CFontCollection::of(&dataCollection()), &dataCollection());
}

TEST(FontCollection, FontsKnowTheirCollection) {
    com_ptr<IDWriteFontCollection> collection;
    EXPECT_EQ(family(L"DejaVu Sans").GetFontCollection(&collection), S_OK);
    EXPECT_EQ(static_cast<IDWriteFontCollection*>(collection), &CFontCollection::system());
}

TEST(FontCollection, WithoutFontsItIsEmpty) {
    CFontCollection empty{FontSet{}};
    UINT32 index = 0;
    BOOL exists = TRUE;
    auto* family = reinterpret_cast<IDWriteFontFamily*>(1);
    EXPECT_EQ(empty.GetFontFamilyCount(), 0u);
    EXPECT_EQ(empty.FindFamilyName(L"DejaVu Sans", &index, &exists), S_OK);
    EXPECT_EQ(exists, FALSE);
    EXPECT_EQ(empty.GetFontFamily(0, &family), E_FAIL);
    EXPECT_EQ(family, nullptr);
}

TEST(FontCollection, AConfigurationWithoutFontsGivesAnEmptySet) {
    FcConfig* const config = FcConfigCreate();
    ASSERT_NE(config, nullptr);
    EXPECT_TRUE(readFontSet(config).entries.empty());
    FcConfigDestroy(config);
}

TEST(FontCollection, AConfigurationsFacesAreListedWithoutTheVariableRange) {
    FcConfig* const config = FcConfigCreate();
    ASSERT_NE(config, nullptr);
    for (const char* name : {"Variable.ttf", "Collection.ttc", "Cff.otf"}) {
        ASSERT_TRUE(FcConfigAppFontAddFile(config, reinterpret_cast<const FcChar8*>(dataPath(name).c_str())));
    }
    std::vector<std::string> faces;
    for (const FontSetEntry& entry : readFontSet(config).entries) {
        faces.push_back(entry.file.substr(entry.file.rfind('/') + 1) + ":" + std::to_string(entry.index));
    }
    FcConfigDestroy(config);
    EXPECT_THAT(faces, ElementsAre("Cff.otf:0", "Collection.ttc:0", "Collection.ttc:1", "Variable.ttf:0",
                                   "Variable.ttf:131072", "Variable.ttf:196608"));
}

} // namespace
} // namespace platform::test
