// ControlSurface: what a host gives a control to live on. Also holds the host-filled interfaces it
// hands out: SurfaceContainer, SurfaceExtender, SurfaceAmbient.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "common/CtlError.h"
#include "common/CtlTypes.h"
#include "frame/CtlVariant.h"
#include "frame/StdFont.h"
#include "frame/StdPicture.h"
#include "frame/SurfaceClient.h"
#include "frame/WindowDpi.h"
#include "platform/win32/WinApi.h"

// Scale modes of ScaleX and ScaleY.
enum eCtlScaleMode : int16_t {
    kScaleUser = 0,
    kScaleTwips = 1,
    kScalePoints = 2,
    kScalePixels = 3,
    kScaleCharacters = 4,
    kScaleInches = 5,
    kScaleMillimeters = 6,
    kScaleCentimeters = 7,
    kScaleHiMetric = 8,
};

// Values of OLEDropMode.
enum eCtlOLEDropMode : int16_t { ctlOLEDropNone = 0, ctlOLEDropManual = 1 };

// What a late-bound call on a host object without the member raises.
inline CtlError MissingHostMember() {
    return CtlError(u"Extender", u"Object doesn't support this property or method", 438);
}

// The object a control sits in. Forms and picture boxes have a scale mode of their own, in which
// the extender's Left and Top are given; other containers give them in twips.
class SurfaceContainer {
public:
    virtual ~SurfaceContainer() = default;
    virtual bool HasScaleMode() const = 0;
    virtual int16_t ScaleMode() const = 0;
    // Name, and Index where the container is an element of a control array (empty otherwise).
    // A host without them throws, as a late-bound call on an object without the member does.
    virtual CtlString Name() const { throw MissingHostMember(); }
    virtual CtlVariant Index() const { throw MissingHostMember(); }
};

// One control of the host's form (Parent.Controls), as late binding sees it. Any member may
// throw CtlError when the host cannot answer.
class FormControl {
public:
    virtual ~FormControl() = default;
    // The control's class, as the runtime's TypeName gives it ("ctlUniRadioXP").
    virtual CtlString TypeName() const = 0;
    virtual CtlString Name() const = 0;
    // The index in a control array; empty for a control outside one.
    virtual CtlVariant Index() const = 0;
    // Calls a method of the control by name; arguments in call order.
    virtual CtlVariant CallByName(const CtlString& member, const std::vector<CtlVariant>& args) = 0;
};

// The host's wrapper of a control. Any member may throw CtlError when the host lacks it.
class SurfaceExtender {
public:
    virtual ~SurfaceExtender() = default;
    virtual CtlString Name() const = 0;
    virtual SurfaceContainer* Container() const = 0;
    virtual SurfaceContainer* Parent() const = 0;
    // In the container's unit (see SurfaceContainer).
    virtual float Left() const = 0;
    virtual void Left(float value) = 0;
    virtual float Top() const = 0;
    virtual void Top(float value) = 0;
    virtual bool Default() const = 0;
    virtual bool Cancel() const = 0;
    // Index in a control array (empty outside one); the form's controls; the docking of a bar
    // (0 none, 1 top, 2 bottom, 3 left, 4 right). Hosts without them throw.
    virtual CtlVariant Index() const { throw MissingHostMember(); }
    virtual std::vector<std::unique_ptr<FormControl>> ParentControls() const { throw MissingHostMember(); }
    virtual int16_t Align() const { throw MissingHostMember(); }
    virtual void Align(int16_t /*value*/) { throw MissingHostMember(); }
};

class SurfaceAmbient {
public:
    virtual ~SurfaceAmbient() = default;
    // True at run time, false while a designer shows the control.
    virtual bool UserMode() const = 0;
    virtual std::shared_ptr<StdFont> Font() const = 0;
};

class ControlSurface {
public:
    virtual ~ControlSurface() = default;

    // The control whose entry points the surface calls; nullptr detaches it.
    virtual void SetClient(SurfaceClient* client) = 0;

    virtual HWND hWnd() const = 0;
    virtual HDC hDC() const = 0;
    // Inner size in pixels, the scale unit of every control of this library.
    virtual float ScaleWidth() const = 0;
    virtual float ScaleHeight() const = 0;
    virtual float ScaleX(float value, int16_t fromMode, int16_t toMode) const = 0;
    virtual float ScaleY(float value, int16_t fromMode, int16_t toMode) const = 0;
    // The DPI the surface is shown at; a surface without a window of its own answers 96.
    virtual int32_t Dpi() const { return kDesignDpi; }
    // Width and height in twips.
    virtual void Size(float width, float height) = 0;
    virtual bool AutoRedraw() const = 0;
    virtual void Refresh() = 0;
    virtual bool Enabled() const = 0;
    virtual void Enabled(bool value) = 0;
    virtual int32_t ForeColor() const = 0;
    virtual void ForeColor(int32_t value) = 0;
    virtual std::shared_ptr<StdFont> Font() const = 0;
    virtual void Font(std::shared_ptr<StdFont> value) = 0;
    // 1 opaque; 0 transparent: only the pixels of MaskPicture that differ from MaskColor exist.
    virtual int16_t BackStyle() const = 0;
    virtual void BackStyle(int16_t value) = 0;
    virtual void MaskColor(int32_t value) = 0;
    virtual void MaskPicture(std::shared_ptr<StdPicture> value) = 0;
    virtual CtlString AccessKeys() const = 0;
    virtual void AccessKeys(const CtlString& value) = 0;
    virtual int16_t MousePointer() const = 0;
    virtual void MousePointer(int16_t value) = 0;
    virtual std::shared_ptr<StdPicture> MouseIcon() const = 0;
    virtual void MouseIcon(std::shared_ptr<StdPicture> value) = 0;
    virtual int16_t OLEDropMode() const = 0;
    virtual void OLEDropMode(int16_t value) = 0;
    virtual void OLEDrag() = 0;
    virtual SurfaceExtender& Extender() = 0;
    virtual SurfaceAmbient& Ambient() = 0;
    virtual void PropertyChanged(const CtlString& propertyName) = 0;
};
