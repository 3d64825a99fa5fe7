// EventDataObject: the data object of a control's drag events as automation sees it, a view of
// the surface's data that is valid for the one event that hands it out.
#pragma once

#include <cstdint>

#include "com/ComPrerequisites.h"
#include "frame/SurfaceDataObject.h"

class EventDataObject {
public:
    explicit EventDataObject(SurfaceDataObject& data) noexcept;
    ~EventDataObject() { ::VariantClear(&m_result); }
    // Holds the last result handed out: a copy would free it twice.
    EventDataObject(const EventDataObject&) = delete;
    EventDataObject& operator=(const EventDataObject&) = delete;

    // After its event the object answers with an error instead of touching the gone data.
    void Detach() noexcept {
        m_data = nullptr;
        m_platform = nullptr;
    }
    // The platform's data object of the drag while the event runs; null for data without one.
    IDataObject* Platform() const noexcept { return m_platform; }

    // Text for formats 1 and 13 (13 when absent); the bytes of any other format the drag
    // carries; empty for a format it does not have.
    const VARIANT& GetData(const VARIANT& format);
    // Text goes in as the drag's data; without a value only the format is offered, as nothing.
    void SetData(const VARIANT& data, const VARIANT& format);
    bool GetFormat(int16_t format) const;
    void Clear();
    // The file names of a file drag (format 15), as an array of strings.
    const VARIANT& Files();

private:
    SurfaceDataObject& live() const;
    const VARIANT& keep(VARIANT value) noexcept;

    SurfaceDataObject* m_data;
    IDataObject* m_platform;
    VARIANT m_result;
};
