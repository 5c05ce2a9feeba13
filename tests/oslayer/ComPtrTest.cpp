#include <oslayer/com_ptr.h>

#include <dwrite.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using oslayer::com_ptr;

/// Counts its references and answers for one interface beside IUnknown; lives on the stack and is never deleted.
struct Counted : IDWritePixelSnapping {
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        ++queries;
        if (IsEqualGUID(riid, __uuidof(IDWritePixelSnapping))) {
            *object = static_cast<IDWritePixelSnapping*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT*) override { return E_NOTIMPL; }

    ULONG references = 1;
    int queries = 0;
};

using Pointer = com_ptr<IDWritePixelSnapping>;

HRESULT give(Counted& object, IDWritePixelSnapping** out) {
    object.AddRef();
    *out = &object;
    return S_OK;
}

TEST(ComPtr, TheDefaultIsEmpty) {
    const Pointer pointer;
    EXPECT_EQ(pointer.get(), nullptr);
    EXPECT_FALSE(pointer);
    EXPECT_TRUE(pointer == nullptr);
}

TEST(ComPtr, SharingAddsAReferenceAndDestructionReleasesIt) {
    Counted object;
    {
        const Pointer pointer(&object);
        EXPECT_EQ(object.references, 2U);
        const Pointer copy(pointer);
        EXPECT_EQ(object.references, 3U);
        EXPECT_EQ(copy.get(), &object);
    }
    EXPECT_EQ(object.references, 1U);
}

TEST(ComPtr, MovingAddsNothingAndEmptiesTheSource) {
    static_assert(std::is_nothrow_move_constructible_v<Pointer> && std::is_nothrow_move_assignable_v<Pointer>);
    Counted object;
    Pointer source(&object);
    Pointer target(std::move(source));
    EXPECT_EQ(object.references, 2U);
    EXPECT_EQ(source.get(), nullptr); // NOLINT(bugprone-use-after-move): what is left is what this is about
    source = std::move(target);
    EXPECT_EQ(object.references, 2U);
    EXPECT_EQ(target.get(), nullptr); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(source.get(), &object);
}

TEST(ComPtr, AssigningReleasesWhatWasHeld) {
    Counted first;
    Counted second;
    Pointer pointer(&first);
    const Pointer other(&second);
    pointer = other;
    EXPECT_EQ(first.references, 1U);
    EXPECT_EQ(second.references, 3U);
    pointer = &first;
    EXPECT_EQ(first.references, 2U);
    EXPECT_EQ(second.references, 2U);
    pointer = nullptr;
    EXPECT_EQ(first.references, 1U);
    EXPECT_FALSE(pointer);
}

TEST(ComPtr, AssigningToItselfKeepsTheReference) {
    Counted object;
    Pointer pointer(&object);
    const Pointer& same = pointer;
    pointer = same;
    EXPECT_EQ(object.references, 2U);
    pointer = pointer.get();
    EXPECT_EQ(object.references, 2U);
    EXPECT_EQ(pointer.get(), &object);
}

TEST(ComPtr, TheAddressIsAnOutParameterThatReleasesWhatWasHeld) {
    Counted first;
    Counted second;
    {
        Pointer pointer;
        EXPECT_EQ(give(first, &pointer), S_OK);
        EXPECT_EQ(first.references, 2U);
        EXPECT_EQ(give(second, &pointer), S_OK);
        EXPECT_EQ(first.references, 1U);
        EXPECT_EQ(second.references, 2U);
    }
    EXPECT_EQ(second.references, 1U);
}

TEST(ComPtr, ConvertsToThePlainPointer) {
    Counted object;
    const Pointer pointer(&object);
    const auto referencesOf = [](IDWritePixelSnapping* plain) { return static_cast<Counted*>(plain)->references; };
    EXPECT_EQ(referencesOf(pointer), 2U);
    EXPECT_EQ(pointer->AddRef(), 3U);
    EXPECT_EQ(pointer->Release(), 2U);
}

TEST(ComPtr, AdoptingAddsNothingAndDetachingReleasesNothing) {
    Counted object;
    Pointer pointer = Pointer::adopt(&object);
    EXPECT_EQ(object.references, 1U);
    IDWritePixelSnapping* plain = pointer.detach();
    EXPECT_EQ(plain, &object);
    EXPECT_EQ(object.references, 1U);
    EXPECT_FALSE(pointer);
}

TEST(ComPtr, QueryingTakesTheOtherInterface) {
    Counted object;
    {
        Pointer pointer;
        pointer.queryFrom(&object);
        EXPECT_EQ(pointer.get(), &object);
        EXPECT_EQ(object.references, 2U);
        EXPECT_EQ(object.queries, 1);
    }
    EXPECT_EQ(object.references, 1U);
}

TEST(ComPtr, QueryingTheSameObjectIsSkipped) {
    Counted object;
    Pointer pointer(&object);
    pointer.queryFrom(&object);
    EXPECT_EQ(object.queries, 0);
    EXPECT_EQ(object.references, 2U);
}

TEST(ComPtr, AFailedQueryLeavesItEmpty) {
    Counted held;
    Counted object;
    com_ptr<IDWriteTextRenderer> pointer;
    pointer.queryFrom(&object);
    EXPECT_FALSE(pointer);
    EXPECT_EQ(object.references, 1U);

    Pointer holding(&held);
    holding.queryFrom(nullptr);
    EXPECT_FALSE(holding);
    EXPECT_EQ(held.references, 1U);
}

TEST(ComPtr, ItsUuidIsTheInterfaces) {
    const Pointer pointer;
    EXPECT_TRUE(IsEqualGUID(__uuidof(pointer), __uuidof(IDWritePixelSnapping)));
    EXPECT_TRUE(IsEqualGUID(__uuidof(Pointer), __uuidof(IDWritePixelSnapping)));
}

TEST(ComPtrDeathTest, TheArrowOfAnEmptyOneEndsTheProcess) {
    const Pointer pointer;
    EXPECT_DEATH(pointer->AddRef(), "terminate");
}

} // namespace
