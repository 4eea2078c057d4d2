// Lays out a window's controls in rows, columns and grids that fit their content. Pure; lengths are in the unit of the
// controls' sizes.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace hullrider {

struct FormSize {
    int width = 0, height = 0;
};

struct FormBox {
    int x = 0, y = 0, width = 0, height = 0;

    bool operator==(const FormBox&) const = default;
};

// A control, or parts that lie beside or below each other.
struct Form {
    enum class Kind { kSpace, kControl, kRow, kColumn, kGrid, kStack };

    Form() = default;  // empty
    Form(void* handle) : kind(Kind::kControl), control(handle) {}
    Form(Kind kindOfForm, std::vector<Form> partsOfForm) : kind(kindOfForm), parts(std::move(partsOfForm)) {}

    Kind kind = Kind::kSpace;
    void* control = nullptr;  // the caller's handle
    std::vector<Form> parts;
    size_t columns = 1;  // of a grid
    int gap = 8;         // between parts
    // Takes its share of the spare room; so does everything around it.
    bool growsWide = false, growsHigh = false;
};

// Parts side by side, each at its own width. A control keeps its height and is centered in the row.
Form Row(std::vector<Form> parts);

// Parts below each other, all as wide as the column.
Form Column(std::vector<Form> parts);

// Parts row by row; each column is as wide as its widest part, and each row as high as its highest.
Form Grid(size_t columns, std::vector<Form> parts);

// Parts in the same place, of which one is shown at a time.
Form Stack(std::vector<Form> parts);

// Empty room that pushes the rest of a row to the right.
Form Spring();

Form GrowWide(Form form);
Form Grow(Form form);  // in both directions
Form WithGap(int gap, Form form);

using ControlSize = std::function<FormSize(void* control)>;
using PlaceControl = std::function<void(void* control, const FormBox& box)>;

// Whether the form can use more height than it needs.
bool GrowsHigh(const Form& form);

// The least size that the form needs.
FormSize SizeOfForm(const Form& form, const ControlSize& sizeOf);

// Places every control of the form in a box of at least that size.
void PlaceForm(const Form& form, const FormBox& box, const ControlSize& sizeOf, const PlaceControl& place);

}  // namespace hullrider
