#include <algorithm>
#include <cmath>

#include "demo_music/tracker/module.h"

namespace hullrider::demo {
namespace {

constexpr int kRowsOfBeat = 4;
constexpr size_t kVibratoAfterRows = 3;
constexpr double kNominalVelocity = 0.7;  // at which a sample plays at its own volume

using Grid = std::vector<Row>;

size_t RowOf(double beat) {
    return static_cast<size_t>(std::lround(std::max(0.0, beat) * kRowsOfBeat));
}

// The notes of a voice, those that begin in the same row together, highest first.
std::vector<std::vector<Note>> Chords(const Phrase& phrase) {
    std::vector<Note> notes = phrase.notes;
    std::stable_sort(notes.begin(), notes.end(), [](const Note& a, const Note& b) {
        const size_t rowA = RowOf(a.start), rowB = RowOf(b.start);
        return rowA != rowB ? rowA < rowB : a.key > b.key;
    });
    std::vector<std::vector<Note>> chords;
    for (const Note& note : notes) {
        if (chords.empty() || RowOf(chords.back().front().start) != RowOf(note.start)) chords.emplace_back();
        chords.back().push_back(note);
    }
    return chords;
}

// The chord's two next notes above its lowest, as the effect wants them.
int ArpeggioOf(const std::vector<Note>& chord) {
    int parameter = 0;
    for (size_t i = 2; i <= 3 && i <= chord.size(); ++i) {
        const int interval = chord[chord.size() - i].key - chord.back().key;
        parameter = parameter * 16 + std::clamp(interval, 0, 15);
    }
    return parameter;
}

class Sequencer {
public:
    Sequencer(const TrackerPiece& piece, size_t rows)
        : piece_(piece), grid_(rows, Row{std::vector<Cell>(piece.pans.size()), 0}) {}

    Grid Fill() {
        // All notes first: only then is it known where each one is cut short by the next.
        for (const ModuleVoice& voice : piece_.voices) ForEachNote(voice, &Sequencer::PutNote);
        for (const ModuleVoice& voice : piece_.voices) ForEachNote(voice, &Sequencer::PutRest);
        if (piece_.rowTicks[0] != piece_.rowTicks[1]) {
            for (size_t row = 0; row < grid_.size(); ++row) grid_[row].ticks = piece_.rowTicks[row % 2];
        }
        return std::move(grid_);
    }

private:
    using Put = void (Sequencer::*)(const ModuleVoice&, const Note&, size_t channel, int arpeggio);

    void ForEachNote(const ModuleVoice& voice, Put put) {
        const auto first = static_cast<size_t>(voice.channel);
        for (const std::vector<Note>& chord : Chords(voice.phrase)) {
            if (voice.arpeggio) {
                (this->*put)(voice, chord.back(), first, ArpeggioOf(chord));
                continue;
            }
            for (size_t i = 0; i < chord.size() && first + i < piece_.pans.size(); ++i) {
                (this->*put)(voice, chord[i], first + i, 0);
            }
        }
    }

    void PutNote(const ModuleVoice& voice, const Note& note, size_t channel, int arpeggio) {
        const size_t row = RowOf(note.start);
        if (row >= grid_.size()) return;
        const double volume =
            note.velocity / kNominalVelocity * 64 * piece_.samples[static_cast<size_t>(voice.sample) - 1].volume;
        grid_[row].cells[channel] = {note.key, voice.sample, std::clamp(static_cast<int>(std::lround(volume)), 1, 64),
                                     arpeggio != 0 ? Effect::kArpeggio : Effect::kNone, arpeggio};
    }

    // What follows a note in its channel until its end or the next note.
    void PutRest(const ModuleVoice& voice, const Note& note, size_t channel, int arpeggio) {
        const size_t start = RowOf(note.start), end = std::max(start + 1, RowOf(note.start + note.beats));
        if (start >= grid_.size()) return;
        const Cell& own = grid_[start].cells[channel];
        if (own.key != note.key || own.sample != voice.sample) return;  // another voice took the cell
        for (size_t row = start + 1; row < std::min(end, grid_.size()); ++row) {
            Cell& cell = grid_[row].cells[channel];
            if (cell.key != Cell::kNoNote) return;
            if (arpeggio != 0) {
                cell.effect = Effect::kArpeggio;
                cell.parameter = arpeggio;
            } else if (voice.vibrato != 0 && row >= start + kVibratoAfterRows) {
                cell.effect = Effect::kVibrato;
                cell.parameter = voice.vibrato;
            }
        }
        const bool ringsOut = piece_.samples[static_cast<size_t>(voice.sample) - 1].loopLength == 0;
        if (end >= grid_.size() || ringsOut) return;
        Cell& cell = grid_[end].cells[channel];
        if (cell.key == Cell::kNoNote) cell.key = Cell::kRelease;
    }

    const TrackerPiece& piece_;
    Grid grid_;
};

}  // namespace

Module Sequence(const TrackerPiece& piece) {
    double beats = 0;
    for (const ModuleVoice& voice : piece.voices) beats = std::max(beats, voice.phrase.beats);
    const size_t rows = (RowOf(beats) + kRowsOfPattern - 1) / kRowsOfPattern * kRowsOfPattern;
    const Grid grid = Sequencer(piece, rows).Fill();

    Module module{piece.title, piece.beatsPerMinute, piece.pans, piece.samples, {}, {}};
    for (auto row = grid.begin(); row != grid.end(); row += kRowsOfPattern) {
        const Pattern pattern(row, row + kRowsOfPattern);
        auto found = std::find(module.patterns.begin(), module.patterns.end(), pattern);
        if (found == module.patterns.end()) found = module.patterns.insert(found, pattern);
        module.order.push_back(static_cast<int>(found - module.patterns.begin()));
    }
    return module;
}

}  // namespace hullrider::demo
