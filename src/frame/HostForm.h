// HostForm: the controls of one C++ form, so that a control can walk Extender.Parent.Controls.
#pragma once

#include <memory>
#include <vector>

#include "frame/ControlSurface.h"

class Win32Surface;

// A host adds each surface of the form; the surface's built-in extender then answers
// ParentControls with the controls added, in the order added. A control that is not a
// LateBoundControl answers no TypeName and takes no calls (it reads as a foreign control).
// Either side may go first: a surface leaves its form when destroyed, and a form releases its
// surfaces when destroyed.
class HostForm {
public:
    HostForm() = default;
    ~HostForm();
    // Surfaces point back at it: a copy would be a second form they do not know.
    HostForm(const HostForm&) = delete;
    HostForm& operator=(const HostForm&) = delete;

    void Add(Win32Surface& surface);
    void Remove(Win32Surface& surface) noexcept;
    size_t Count() const noexcept { return m_surfaces.size(); }
    std::vector<std::unique_ptr<FormControl>> Controls() const;

private:
    std::vector<Win32Surface*> m_surfaces;
};
