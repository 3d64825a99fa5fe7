// FakeSurface: a control surface without a window, for frame logic tests; records what reaches it.
#pragma once

#include <memory>

#include "frame/ControlSurface.h"
#include "frame/ScaleUnits.h"

namespace testsupport {

class FakeSurface : public ControlSurface, public SurfaceExtender, public SurfaceAmbient {
public:
    // ---- what a test sets and reads ----
    bool userMode = true;
    bool autoRedraw = false;
    float width = 100.0F;
    float height = 20.0F;
    int refreshCount = 0;
    SurfaceClient* client = nullptr;

    // ---- ControlSurface ----
    void SetClient(SurfaceClient* value) override { client = value; }
    HWND hWnd() const override { return nullptr; }
    HDC hDC() const override { return nullptr; }
    float ScaleWidth() const override { return width; }
    float ScaleHeight() const override { return height; }
    float ScaleX(float value, int16_t fromMode, int16_t toMode) const override {
        return ConvertScaleUnits(value, fromMode, toMode, false, 96);
    }
    float ScaleY(float value, int16_t fromMode, int16_t toMode) const override {
        return ConvertScaleUnits(value, fromMode, toMode, true, 96);
    }
    void Size(float w, float h) override {
        width = w / 15.0F;
        height = h / 15.0F;
    }
    bool AutoRedraw() const override { return autoRedraw; }
    void Refresh() override {
        ++refreshCount;
        if (client != nullptr && !autoRedraw) client->Paint();
    }
    bool Enabled() const override { return m_bEnabled; }
    void Enabled(bool value) override { m_bEnabled = value; }
    int32_t ForeColor() const override { return m_lForeColor; }
    void ForeColor(int32_t value) override { m_lForeColor = value; }
    // Also the ambient font: one override serves both interfaces, which is all these tests need.
    std::shared_ptr<StdFont> Font() const override { return m_font; }
    void Font(std::shared_ptr<StdFont> value) override { m_font = std::move(value); }
    int16_t BackStyle() const override { return m_iBackStyle; }
    void BackStyle(int16_t value) override { m_iBackStyle = value; }
    void MaskColor(int32_t) override {}
    void MaskPicture(std::shared_ptr<StdPicture>) override {}
    CtlString AccessKeys() const override { return m_sAccessKeys; }
    void AccessKeys(const CtlString& value) override { m_sAccessKeys = value; }
    int16_t MousePointer() const override { return m_iMousePointer; }
    void MousePointer(int16_t value) override { m_iMousePointer = value; }
    std::shared_ptr<StdPicture> MouseIcon() const override { return m_mouseIcon; }
    void MouseIcon(std::shared_ptr<StdPicture> value) override { m_mouseIcon = std::move(value); }
    int16_t OLEDropMode() const override { return m_iOLEDropMode; }
    void OLEDropMode(int16_t value) override { m_iOLEDropMode = value; }
    void OLEDrag() override {}
    SurfaceExtender& Extender() override { return *this; }
    SurfaceAmbient& Ambient() override { return *this; }
    void PropertyChanged(const CtlString&) override {}

    // ---- SurfaceExtender ----
    CtlString Name() const override { return u"Label1"; }
    SurfaceContainer* Container() const override { return nullptr; }
    SurfaceContainer* Parent() const override { return nullptr; }
    float Left() const override { return 0.0F; }
    void Left(float) override {}
    float Top() const override { return 0.0F; }
    void Top(float) override {}
    bool Default() const override { return false; }
    bool Cancel() const override { return false; }

    // ---- SurfaceAmbient ----
    bool UserMode() const override { return userMode; }

private:
    bool m_bEnabled = true;
    int32_t m_lForeColor = static_cast<int32_t>(0x80000012u);
    std::shared_ptr<StdFont> m_font = std::make_shared<StdFont>();
    int16_t m_iBackStyle = 1;
    CtlString m_sAccessKeys;
    int16_t m_iMousePointer = 0;
    std::shared_ptr<StdPicture> m_mouseIcon = StdPicture::Empty();
    int16_t m_iOLEDropMode = 0;
};

}  // namespace testsupport
