#include "editor/ResourceCommands.h"

#include <algorithm>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

template <class Record>
ResourceCommand<Record>::ResourceCommand(TaskEditor& editor, Change change, Record record,
                                         const QString& text)
    : QUndoCommand(text), editor_(editor), change_(change), held_(std::move(record)) {}

template <>
std::vector<model::ImageRecord>& ResourceCommand<model::ImageRecord>::list() {
    return editor_.document().images;
}

template <>
std::vector<model::ColorRecord>& ResourceCommand<model::ColorRecord>::list() {
    return editor_.document().colors;
}

template <class Record>
typename std::vector<Record>::iterator ResourceCommand<Record>::find(int id) {
    return std::find_if(list().begin(), list().end(), [id](const Record& r) { return r.id == id; });
}

template <class Record>
void ResourceCommand<Record>::redo() {
    switch (change_) {
        case Change::Add:
            list().push_back(held_);
            break;
        case Change::Remove: {
            const auto at = find(held_.id);
            index_ = size_t(at - list().begin());
            held_ = *at;
            list().erase(at);
            break;
        }
        case Change::Replace:
            std::swap(*find(held_.id), held_);
            break;
    }
    editor_.announceResources();
}

template <class Record>
void ResourceCommand<Record>::undo() {
    switch (change_) {
        case Change::Add:
            list().erase(find(held_.id));
            break;
        case Change::Remove:
            list().insert(list().begin() + std::ptrdiff_t(index_), held_);
            break;
        case Change::Replace:
            std::swap(*find(held_.id), held_);
            break;
    }
    editor_.announceResources();
}

template class ResourceCommand<model::ImageRecord>;
template class ResourceCommand<model::ColorRecord>;

}  // namespace autoscene::ui
