// The frame's connection points in this process, on a frame of a class of the test's own (no module,
// no container): a sink unadvised by another sink's handler while an event or a property change is
// under way is never called once released; the enumerator of connection points and a load that
// notifies a change, each with every allocation they make failing in turn.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>

#include <functional>

#include "FailingNew.h"
#include "KivOleControl.h"

namespace {

const IID kEventsIid = {0x7d1c6a52, 0x3b0e, 0x4f7a, {0x9c, 0x21, 0x5e, 0x48, 0x0b, 0x6d, 0x13, 0xa7}};
const IID kDispatchIid = {0x7d1c6a53, 0x3b0e, 0x4f7a, {0x9c, 0x21, 0x5e, 0x48, 0x0b, 0x6d, 0x13, 0xa7}};
const CLSID kClsid = {0x7d1c6a54, 0x3b0e, 0x4f7a, {0x9c, 0x21, 0x5e, 0x48, 0x0b, 0x6d, 0x13, 0xa7}};
const KivDispInterface kDispatch = {L"_DProbe", &kDispatchIid, L"", false, nullptr, 0};
const KivDispInterface kEvents = {L"_DProbeEvents", &kEventsIid, L"", true, nullptr, 0};
const KivControlClass kClass = {&kClsid, &kDispatch, &kEvents, &kClsid, 0, 0, kivstock::kEnabled};

// A behaviour with nothing of its own: the frame alone is under test.
class NoBehaviour final : public KivControlBehaviour {
public:
    KivControlCore* core() override { return nullptr; }
    void onDraw(IKivDC&, const KivRect&, bool) override {}
};

KivComPtr<KivOleControl> newFrame() {
    return KivComPtr<KivOleControl>(
        new KivOleControl(kClass, [](KivOleControl&) -> std::unique_ptr<KivControlBehaviour> {
            return std::make_unique<NoBehaviour>();
        }),
        false);
}

KivComPtr<IConnectionPoint> pointOf(KivOleControl* frame, const IID& iid) {
    KivComPtr<IConnectionPoint> point;
    static_cast<IConnectionPointContainer*>(frame)->FindConnectionPoint(iid, point.put());
    return point;
}

// An event or property-notify sink whose handler can run a step of the test. Its memory is the
// test's (never freed), so a call after its last reference went is seen, not undefined.
class ProbeSink final : public KivDispatchWithoutTypes, public IPropertyNotifySink {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        *out = nullptr;
        if (riid == IID_IUnknown || riid == IID_IDispatch || riid == kEventsIid) *out = static_cast<IDispatch*>(this);
        else if (riid == IID_IPropertyNotifySink) *out = static_cast<IPropertyNotifySink*>(this);
        else return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++refs; }
    STDMETHODIMP_(ULONG) Release() override {
        if (--refs == 0) released = true;
        return refs;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override { return heard(); }
    STDMETHODIMP OnChanged(DISPID) override { return heard(); }
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

    std::function<void()> onCall;
    ULONG refs = 1;  // the test's own
    int calls = 0;
    bool released = false;
    bool calledAfterRelease = false;

private:
    HRESULT heard() {
        ++calls;
        if (released) calledAfterRelease = true;
        if (onCall) onCall();
        return S_OK;
    }
};

// Two sinks advised on a frame's connection point, their only holder then; the first one's handler
// unadvises the second. (The sinks are declared first: the frame lets them go before they end.)
class ConnectionPoints : public ::testing::Test {
protected:
    void adviseWhereTheFirstUnadvisesTheSecond(const IID& iid) {
        point = pointOf(frame.get(), iid);
        ASSERT_TRUE(point);
        DWORD firstCookie = 0, secondCookie = 0;
        ASSERT_EQ(point->Advise(static_cast<IDispatch*>(&first), &firstCookie), S_OK);
        ASSERT_EQ(point->Advise(static_cast<IDispatch*>(&second), &secondCookie), S_OK);
        first.Release();
        second.Release();
        first.onCall = [this, secondCookie] { point->Unadvise(secondCookie); };
    }
    ProbeSink first, second;
    KivComPtr<KivOleControl> frame = newFrame();
    KivComPtr<IConnectionPoint> point;
};

}  // namespace

TEST_F(ConnectionPoints, AnEventSinkUnadvisedByAnotherSinksHandlerIsNotCalledOnceReleased) {
    adviseWhereTheFirstUnadvisesTheSecond(kEventsIid);
    frame->fireEvent(1, {KivEventArg::ofLong(3)});
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 1);  // it was advised when the event began: it hears it, still alive
    EXPECT_FALSE(second.calledAfterRelease);
    EXPECT_TRUE(second.released);  // and its last reference went with the event
    frame->fireEvent(1, {KivEventArg::ofLong(4)});
    EXPECT_EQ(first.calls, 2);
    EXPECT_EQ(second.calls, 1);
}

TEST_F(ConnectionPoints, APropertySinkUnadvisedByAnotherSinksHandlerIsNotCalledOnceReleased) {
    adviseWhereTheFirstUnadvisesTheSecond(IID_IPropertyNotifySink);
    frame->setEnabled(false);
    EXPECT_EQ(first.calls, 1);
    EXPECT_FALSE(second.calledAfterRelease);
    EXPECT_TRUE(second.released);
}

TEST_F(ConnectionPoints, EnumeratingThePointsWithoutMemoryAnswersOutOfMemoryAndLeavesNothing) {
    using Points = KivComPtr<IEnumConnectionPoints>;
    auto none = [] { return Points(); };
    auto madeOnlyWithMemory = [](const Points& made, HRESULT hr, long failing) {
        EXPECT_EQ(hr, failing == 0 ? S_OK : E_OUTOFMEMORY);
        EXPECT_EQ(static_cast<bool>(made), failing == 0);
    };
    auto* container = static_cast<IConnectionPointContainer*>(frame.get());
    failingnew::failEachAllocation(
        none, [&](Points& made) { return container->EnumConnectionPoints(made.put()); }, madeOnlyWithMemory);
    Points points;
    ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
    failingnew::failEachAllocation(none, [&](Points& clone) { return points->Clone(clone.put()); }, madeOnlyWithMemory);
    points.reset();
    frame->AddRef();
    EXPECT_EQ(frame->Release(), 1u);  // no enumerator holds the frame
}

TEST(KivOleControlPersistence, ALoadThatCannotNotifyItsChangeStillLoadsWithoutAnException) {
    // A saved state with Enabled false: loading it changes Enabled, which notifies the sinks.
    KivComPtr<IStream> saved;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, saved.put()), S_OK);
    {
        KivComPtr<KivOleControl> source = newFrame();
        source->setEnabled(false);
        ASSERT_EQ(static_cast<IPersistStreamInit*>(source.get())->Save(saved.get(), TRUE), S_OK);
    }
    ProbeSink sink;
    failingnew::failEachAllocation(
        [&] {
            KivComPtr<KivOleControl> frame = newFrame();
            DWORD cookie = 0;
            pointOf(frame.get(), IID_IPropertyNotifySink)->Advise(static_cast<IDispatch*>(&sink), &cookie);
            return frame;
        },
        [&](KivComPtr<KivOleControl>& frame) {
            const LARGE_INTEGER start{};
            saved->Seek(start, STREAM_SEEK_SET, nullptr);
            return static_cast<IPersistStreamInit*>(frame.get())->Load(saved.get());
        },
        [](const KivComPtr<KivOleControl>& frame, HRESULT hr, long) {
            EXPECT_EQ(hr, S_OK);
            EXPECT_FALSE(frame->enabled());
        });
}
