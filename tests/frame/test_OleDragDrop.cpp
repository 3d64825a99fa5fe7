#include "frame/OleDragDrop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/Win32Surface.h"
#include "support/OleSession.h"
#include "support/TestHostWindow.h"

namespace {

// A surface client that records the drag events and answers as a host's handlers would.
class DropClient final : public SurfaceClient {
public:
    std::vector<std::string> events;
    CtlString dropped;
    void OLEDragOver(SurfaceDataObject& data, int32_t& effect, int16_t& button, int16_t& shift, float& x, float& y,
                     int16_t& state) override {
        events.push_back("Over state " + std::to_string(state) + " effect " + std::to_string(effect) + " button " +
                         std::to_string(button) + " shift " + std::to_string(shift) + " at " +
                         std::to_string(static_cast<int>(x)) + "," + std::to_string(static_cast<int>(y)) +
                         (data.GetFormat(CF_UNICODETEXT) ? " text" : ""));
        effect = DROPEFFECT_COPY;  // the host narrows the effect
    }
    void OLEDragDrop(SurfaceDataObject& data, int32_t& effect, int16_t&, int16_t&, float&, float&) override {
        events.push_back("Drop effect " + std::to_string(effect));
        dropped = data.GetText();
        effect = DROPEFFECT_MOVE;
    }
};

TEST(OleDragDrop, DropsOnASurfaceBecomeItsEventsWithClientCoordinates) {
    const testsupport::OleSession ole;
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 30, 40, 100, 50);
    DropClient client;
    surface.SetClient(&client);
    EXPECT_EQ(surface.DropTarget(), nullptr);
    surface.OLEDropMode(1);
    IDropTarget* target = surface.DropTarget();
    ASSERT_NE(target, nullptr);

    OleTextDataObject* data = new OleTextDataObject(nullptr);
    data->SetText(u"\u0416\u05D0 \U0001F600");
    POINT origin{0, 0};
    ::ClientToScreen(surface.hWnd(), &origin);
    const POINTL at{origin.x + 5, origin.y + 6};
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    EXPECT_EQ(target->DragEnter(data, MK_LBUTTON | MK_SHIFT, at, &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    effect = DROPEFFECT_MOVE;
    target->DragOver(MK_RBUTTON | MK_CONTROL, POINTL{at.x + 1, at.y}, &effect);
    target->DragLeave();
    effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    target->DragEnter(data, MK_LBUTTON, at, &effect);
    effect = DROPEFFECT_COPY;
    target->Drop(data, 0, at, &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_MOVE));
    data->Release();

    const std::vector<std::string> expected = {
        "Over state 0 effect 3 button 1 shift 1 at 5,6 text",
        "Over state 2 effect 2 button 2 shift 2 at 6,6 text",
        "Over state 1 effect 0 button 2 shift 2 at 6,6 text",  // a leave reports the last place
        "Over state 0 effect 3 button 1 shift 0 at 5,6 text",
        "Drop effect 1",
    };
    EXPECT_EQ(client.events, expected);
    EXPECT_EQ(client.dropped, u"\u0416\u05D0 \U0001F600");
    surface.OLEDropMode(0);
    surface.SetClient(nullptr);
}

class RecordingReceiver final : public OleDragReceiver {
public:
    bool defaultCursors = true;
    std::vector<int16_t> setDataFormats;
    OleTextDataObject* fillOnRequest = nullptr;
    void OnOleDrag(IDataObject*, DWORD, POINTL, DWORD&, int16_t) override {}
    bool OnOleFeedback(DWORD) override { return defaultCursors; }
    void OnOleSetData(int16_t format) override {
        setDataFormats.push_back(format);
        if (fillOnRequest != nullptr) fillOnRequest->SetText(u"late");
    }
};

TEST(OleDragDrop, SourceAndDataObjectAnswerAsTheDragLoopExpects) {
    RecordingReceiver receiver;
    SurfaceDropSource* source = new SurfaceDropSource(&receiver);
    const struct {
        BOOL escape;
        DWORD keys;
        HRESULT expected;
    } cases[] = {
        {TRUE, MK_LBUTTON, DRAGDROP_S_CANCEL},
        {FALSE, MK_LBUTTON, S_OK},
        {FALSE, MK_RBUTTON, S_OK},
        {FALSE, 0, DRAGDROP_S_DROP},
        {FALSE, MK_SHIFT, DRAGDROP_S_DROP},
    };
    for (const auto& c : cases) EXPECT_EQ(source->QueryContinueDrag(c.escape, c.keys), c.expected);
    EXPECT_EQ(source->GiveFeedback(DROPEFFECT_COPY), DRAGDROP_S_USEDEFAULTCURSORS);
    receiver.defaultCursors = false;
    EXPECT_EQ(source->GiveFeedback(DROPEFFECT_COPY), S_OK);
    source->Release();

    // Text asked for before any was set: the host may supply it then (delayed rendering).
    OleTextDataObject* data = new OleTextDataObject(&receiver);
    receiver.fillOnRequest = data;
    FORMATETC unicode{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    FORMATETC ansi{CF_TEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    FORMATETC bitmap{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    EXPECT_EQ(data->QueryGetData(&unicode), DV_E_FORMATETC);
    STGMEDIUM medium{};
    ASSERT_EQ(data->GetData(&unicode, &medium), S_OK);
    EXPECT_EQ(receiver.setDataFormats, (std::vector<int16_t>{CF_UNICODETEXT}));
    EXPECT_EQ(FromWide(static_cast<const wchar_t*>(::GlobalLock(medium.hGlobal))), u"late");
    ::GlobalUnlock(medium.hGlobal);
    ::ReleaseStgMedium(&medium);
    ASSERT_EQ(data->GetData(&ansi, &medium), S_OK);
    EXPECT_STREQ(static_cast<const char*>(::GlobalLock(medium.hGlobal)), "late");
    ::GlobalUnlock(medium.hGlobal);
    ::ReleaseStgMedium(&medium);
    EXPECT_EQ(data->GetData(&bitmap, &medium), DV_E_FORMATETC);
    data->Detach();
    data->Release();
}

}  // namespace
