#include "frame/HostForm.h"

#include <algorithm>

#include "frame/LateBoundControl.h"
#include "frame/Win32Surface.h"

namespace {

// A surface of the form as late binding sees it: the control's class and methods, the
// extender's Name and Index.
class SurfaceFormControl final : public FormControl {
public:
    explicit SurfaceFormControl(Win32Surface& surface) noexcept : m_surface(surface) {}
    CtlString TypeName() const override { return control().TypeName(); }
    CtlString Name() const override { return m_surface.Extender().Name(); }
    CtlVariant Index() const override { return m_surface.Extender().Index(); }
    CtlVariant CallByName(const CtlString& member, const std::vector<CtlVariant>& args) override {
        return control().CallByName(member, args);
    }

private:
    LateBoundControl& control() const {
        auto* control = dynamic_cast<LateBoundControl*>(m_surface.Client());
        if (control == nullptr) throw MissingHostMember();
        return *control;
    }
    Win32Surface& m_surface;
};

}  // namespace

HostForm::~HostForm() {
    for (Win32Surface* surface : m_surfaces) surface->HostExtender().Form(nullptr);
}

void HostForm::Add(Win32Surface& surface) {
    if (std::find(m_surfaces.begin(), m_surfaces.end(), &surface) != m_surfaces.end()) return;
    if (HostForm* previous = surface.HostExtender().Form()) previous->Remove(surface);
    m_surfaces.push_back(&surface);
    surface.HostExtender().Form(this);
}

void HostForm::Remove(Win32Surface& surface) noexcept {
    std::erase(m_surfaces, &surface);
    if (surface.HostExtender().Form() == this) surface.HostExtender().Form(nullptr);
}

std::vector<std::unique_ptr<FormControl>> HostForm::Controls() const {
    std::vector<std::unique_ptr<FormControl>> controls;
    controls.reserve(m_surfaces.size());
    for (Win32Surface* surface : m_surfaces) controls.push_back(std::make_unique<SurfaceFormControl>(*surface));
    return controls;
}
