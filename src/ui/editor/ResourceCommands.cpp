#include "editor/ResourceCommands.h"

#include <type_traits>

#include "editor/TaskEditor.h"

namespace autoscene::ui {

template <class Record>
void AddResourceCommand<Record>::redo() {
    model::TaskDocument& task = editor_.document();
    (task.*list_).push_back(record_);
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        task.imageRects.insert(record_.file, record_.rect);
    }
    editor_.announceResources();
}

template <class Record>
void AddResourceCommand<Record>::undo() {
    model::TaskDocument& task = editor_.document();
    std::erase_if(task.*list_, [this](const Record& r) { return r.id == record_.id; });
    if constexpr (std::is_same_v<Record, model::ImageRecord>) {
        task.imageRects.remove(record_.file);
    }
    editor_.announceResources();
}

template class AddResourceCommand<model::ImageRecord>;
template class AddResourceCommand<model::ColorRecord>;
template class AddResourceCommand<model::OriginalImageRecord>;

}  // namespace autoscene::ui
