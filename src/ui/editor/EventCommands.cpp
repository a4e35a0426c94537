#include "editor/EventCommands.h"

#include "editor/TaskEditor.h"

namespace autoscene::ui {

namespace {

std::vector<model::EditorEvent>& eventsOf(TaskEditor& editor, int sceneRow) {
    return editor.sceneAt(sceneRow)->events;
}

// Rows count the identification event; the scene's own list does not.
std::vector<model::EditorEvent>::iterator atRow(TaskEditor& editor, int sceneRow, int row) {
    return eventsOf(editor, sceneRow).begin() + (row - 1);
}

}  // namespace

InsertEventsCommand::InsertEventsCommand(TaskEditor& editor, int sceneRow, int row,
                                         std::vector<model::EditorEvent> events,
                                         const QString& text)
    : QUndoCommand(text),
      editor_(editor),
      sceneRow_(sceneRow),
      row_(row),
      events_(std::move(events)) {}

void InsertEventsCommand::redo() {
    eventsOf(editor_, sceneRow_)
        .insert(atRow(editor_, sceneRow_, row_), std::make_move_iterator(events_.begin()),
                std::make_move_iterator(events_.end()));
    const size_t count = events_.size();
    events_.clear();
    events_.resize(count);
    editor_.announceEvents(sceneRow_);
}

void InsertEventsCommand::undo() {
    const auto first = atRow(editor_, sceneRow_, row_);
    const auto last = first + std::ptrdiff_t(events_.size());
    std::move(first, last, events_.begin());
    eventsOf(editor_, sceneRow_).erase(first, last);
    editor_.announceEvents(sceneRow_);
}

RemoveEventsCommand::RemoveEventsCommand(TaskEditor& editor, int sceneRow, std::vector<int> rows)
    : editor_(editor), sceneRow_(sceneRow), rows_(std::move(rows)) {
    setText(rows_.size() == 1
                ? TaskEditor::tr("删除事件 %1").arg(atRow(editor_, sceneRow_, rows_[0])->name)
                : TaskEditor::tr("删除 %n 个事件", nullptr, int(rows_.size())));
}

void RemoveEventsCommand::redo() {
    removed_.resize(rows_.size());
    // From the back, so that the rows still to go keep their place.
    for (size_t i = rows_.size(); i-- > 0;) {
        const auto at = atRow(editor_, sceneRow_, rows_[i]);
        removed_[i] = std::move(*at);
        eventsOf(editor_, sceneRow_).erase(at);
    }
    editor_.announceEvents(sceneRow_);
}

void RemoveEventsCommand::undo() {
    for (size_t i = 0; i < rows_.size(); ++i) {
        eventsOf(editor_, sceneRow_)
            .insert(atRow(editor_, sceneRow_, rows_[i]), std::move(removed_[i]));
    }
    removed_.clear();
    editor_.announceEvents(sceneRow_);
}

MoveEventCommand::MoveEventCommand(TaskEditor& editor, int sceneRow, int from, int to)
    : editor_(editor), sceneRow_(sceneRow), from_(from), to_(to) {
    setText(TaskEditor::tr("移动事件 %1").arg(atRow(editor_, sceneRow_, from_)->name));
}

void MoveEventCommand::move(int from, int to) {
    auto& events = eventsOf(editor_, sceneRow_);
    model::EditorEvent moving = std::move(events[size_t(from - 1)]);
    events.erase(events.begin() + (from - 1));
    events.insert(events.begin() + (to - 1), std::move(moving));
    editor_.announceEvents(sceneRow_);
}

ReplaceEventCommand::ReplaceEventCommand(TaskEditor& editor, int sceneRow, int row,
                                         model::EditorEvent event, const QString& text)
    : QUndoCommand(text),
      editor_(editor),
      sceneRow_(sceneRow),
      row_(row),
      other_(std::move(event)) {}

void ReplaceEventCommand::swap() {
    std::swap(*editor_.eventAt(sceneRow_, row_), other_);
    editor_.announceEvent(sceneRow_, row_);
}

}  // namespace autoscene::ui
