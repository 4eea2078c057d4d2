#include "dialogs/form.h"

#include <algorithm>
#include <numeric>

namespace hullrider {

namespace {

enum class Axis { kWide, kHigh };

int Along(Axis axis, FormSize size) {
    return axis == Axis::kWide ? size.width : size.height;
}

bool Grows(const Form& form, Axis axis) {
    if (axis == Axis::kWide ? form.growsWide : form.growsHigh) return true;
    return std::any_of(form.parts.begin(), form.parts.end(), [axis](const Form& part) { return Grows(part, axis); });
}

// One row or column of a grid.
struct Line {
    int length = 0;
    bool grows = false;
};

std::vector<Line> LinesOf(const Form& form, Axis axis, size_t lines, const ControlSize& sizeOf) {
    std::vector<Line> found(lines);
    for (size_t i = 0; i < form.parts.size(); ++i) {
        Line& line = found[axis == Axis::kWide ? i % form.columns : i / form.columns];
        line.length = std::max(line.length, Along(axis, SizeOfForm(form.parts[i], sizeOf)));
        line.grows = line.grows || Grows(form.parts[i], axis);
    }
    return found;
}

size_t RowsOf(const Form& grid) {
    return (grid.parts.size() + grid.columns - 1) / grid.columns;
}

int Total(const std::vector<Line>& lines, int gap) {
    const auto add = [](int sum, const Line& line) { return sum + line.length; };
    const int gaps = gap * std::max(static_cast<int>(lines.size()) - 1, 0);
    return std::accumulate(lines.begin(), lines.end(), gaps, add);
}

// Divides the spare length equally among the lines that grow.
void Spread(std::vector<Line>& lines, int gap, int length) {
    int left = length - Total(lines, gap);
    auto growing = static_cast<int>(std::count_if(lines.begin(), lines.end(), [](const Line& l) { return l.grows; }));
    for (Line& line : lines) {
        if (!line.grows) continue;
        const int share = left / growing--;
        line.length = std::max(line.length + share, 0);
        left -= share;
    }
}

// A row and a column are grids with one row and with one column.
Form AsGrid(const Form& form) {
    Form grid = form;
    if (form.kind == Form::Kind::kRow) grid.columns = std::max<size_t>(form.parts.size(), 1);
    return grid;
}

FormSize SizeOfStack(const Form& stack, const ControlSize& sizeOf) {
    FormSize size;
    for (const Form& part : stack.parts) {
        const FormSize one = SizeOfForm(part, sizeOf);
        size = {std::max(size.width, one.width), std::max(size.height, one.height)};
    }
    return size;
}

// A control that does not grow keeps its height and is centered in its line.
FormBox BoxWithin(const Form& part, FormBox box, const ControlSize& sizeOf) {
    if (part.kind != Form::Kind::kControl || part.growsHigh) return box;
    const int height = std::min(SizeOfForm(part, sizeOf).height, box.height);
    return {box.x, box.y + (box.height - height) / 2, box.width, height};
}

void PlaceGrid(const Form& grid, const FormBox& box, const ControlSize& sizeOf, const PlaceControl& place) {
    std::vector<Line> columns = LinesOf(grid, Axis::kWide, grid.columns, sizeOf);
    std::vector<Line> rows = LinesOf(grid, Axis::kHigh, RowsOf(grid), sizeOf);
    Spread(columns, grid.gap, box.width);
    Spread(rows, grid.gap, box.height);
    if (grid.kind == Form::Kind::kRow && !rows.empty()) rows[0].length = std::max(rows[0].length, box.height);
    if (grid.kind == Form::Kind::kColumn) columns[0].length = std::max(columns[0].length, box.width);
    FormBox cell{box.x, box.y, 0, 0};
    for (size_t i = 0; i < grid.parts.size(); ++i) {
        const size_t column = i % grid.columns;
        if (column == 0 && i > 0) cell = {box.x, cell.y + cell.height + grid.gap, 0, 0};
        cell.width = columns[column].length;
        cell.height = rows[i / grid.columns].length;
        PlaceForm(grid.parts[i], BoxWithin(grid.parts[i], cell, sizeOf), sizeOf, place);
        cell.x += cell.width + grid.gap;
    }
}

}  // namespace

Form Row(std::vector<Form> parts) {
    return {Form::Kind::kRow, std::move(parts)};
}

Form Column(std::vector<Form> parts) {
    return {Form::Kind::kColumn, std::move(parts)};
}

Form Grid(size_t columns, std::vector<Form> parts) {
    Form grid(Form::Kind::kGrid, std::move(parts));
    grid.columns = columns;
    return grid;
}

Form Stack(std::vector<Form> parts) {
    return {Form::Kind::kStack, std::move(parts)};
}

Form Spring() {
    return GrowWide({});
}

Form GrowWide(Form form) {
    form.growsWide = true;
    return form;
}

Form Grow(Form form) {
    form.growsWide = form.growsHigh = true;
    return form;
}

Form WithGap(int gap, Form form) {
    form.gap = gap;
    return form;
}

bool GrowsHigh(const Form& form) {
    return Grows(form, Axis::kHigh);
}

FormSize SizeOfForm(const Form& form, const ControlSize& sizeOf) {
    switch (form.kind) {
        case Form::Kind::kSpace:
            return {};
        case Form::Kind::kControl:
            return sizeOf(form.control);
        case Form::Kind::kStack:
            return SizeOfStack(form, sizeOf);
        default: {
            const Form grid = AsGrid(form);
            return {Total(LinesOf(grid, Axis::kWide, grid.columns, sizeOf), grid.gap),
                    Total(LinesOf(grid, Axis::kHigh, RowsOf(grid), sizeOf), grid.gap)};
        }
    }
}

void PlaceForm(const Form& form, const FormBox& box, const ControlSize& sizeOf, const PlaceControl& place) {
    switch (form.kind) {
        case Form::Kind::kSpace:
            return;
        case Form::Kind::kControl:
            return place(form.control, box);
        case Form::Kind::kStack:
            for (const Form& part : form.parts) PlaceForm(part, box, sizeOf, place);
            return;
        default:
            return PlaceGrid(AsGrid(form), box, sizeOf, place);
    }
}

}  // namespace hullrider
