#include "platform/ScriptedDialogs.h"

namespace zorfa::platform {

namespace {

const char* kindName(BoxKind kind) {
    switch (kind) {
        case BoxKind::YesNo: return "Yes/No question";
        case BoxKind::YesNoCancel: return "Yes/No/Cancel question";
        case BoxKind::ErrorHelp: return "error box";
        case BoxKind::ErrorOk: return "error box";
        case BoxKind::Information: return "information box";
        case BoxKind::OpenFile: return "open dialog";
        case BoxKind::SaveFile: return "save dialog";
    }
    return "dialog";
}

}  // namespace

void ScriptedDialogs::answer(Answer a) { script_.emplace_back(a); }

void ScriptedDialogs::chooseFile(std::string fileName, int filterIndex) {
    script_.emplace_back(FileChoice{std::move(fileName), filterIndex});
}

const AskedDialog& ScriptedDialogs::last() const {
    if (asked_.empty()) throw std::logic_error("ScriptedDialogs: nothing was asked");
    return asked_.back();
}

void ScriptedDialogs::clear() {
    script_.clear();
    asked_.clear();
    unexpected_.clear();
}

void ScriptedDialogs::fail(const AskedDialog& asking, const std::string& why) {
    std::string message = "ScriptedDialogs: " + why + " for the " + kindName(asking.kind) + " \"" +
                          asking.text + "\"";
    unexpected_.push_back(message);
    throw UnexpectedDialog(message);
}

ScriptedDialogs::Scripted ScriptedDialogs::take(const AskedDialog& asking) {
    asked_.push_back(asking);
    if (script_.empty()) fail(asking, "no answer was scripted");
    Scripted next = script_.front();
    const bool isFileDialog = asking.kind == BoxKind::OpenFile || asking.kind == BoxKind::SaveFile;
    const auto* answer = std::get_if<Answer>(&next);
    bool fits;
    if (isFileDialog) {
        fits = !answer || *answer == Answer::Cancel;
    } else {
        fits = answer && (asking.kind == BoxKind::YesNoCancel || *answer != Answer::Cancel);
    }
    if (!fits) fail(asking, "the next scripted answer does not fit");
    script_.pop_front();
    return next;
}

bool ScriptedDialogs::askYesNo(const std::string& text) {
    return std::get<Answer>(take({BoxKind::YesNo, text, {"Yes", "No"}, 0, {}, {}})) == Answer::Yes;
}

Answer ScriptedDialogs::askYesNoCancel(const std::string& text) {
    return std::get<Answer>(take({BoxKind::YesNoCancel, text, {"Yes", "No", "Cancel"}, 0, {}, {}}));
}

void ScriptedDialogs::showError(const std::string& text, int helpContext) {
    asked_.push_back({BoxKind::ErrorHelp, text, {"OK", "Help"}, helpContext, {}, {}});
}

void ScriptedDialogs::showErrorOk(const std::string& text) {
    asked_.push_back({BoxKind::ErrorOk, text, {"OK"}, 0, {}, {}});
}

void ScriptedDialogs::showInformation(const std::string& text) {
    asked_.push_back({BoxKind::Information, text, {"OK"}, 0, {}, {}});
}

std::optional<FileChoice> ScriptedDialogs::openFile(const OpenFileRequest& request) {
    const Scripted next = take({BoxKind::OpenFile, request.title, {}, 0, request, {}});
    if (const auto* choice = std::get_if<FileChoice>(&next)) return *choice;
    return std::nullopt;
}

std::optional<FileChoice> ScriptedDialogs::saveFile(const SaveFileRequest& request) {
    const Scripted next = take({BoxKind::SaveFile, request.title, {}, 0, {}, request});
    const auto* choice = std::get_if<FileChoice>(&next);
    if (!choice) return std::nullopt;
    // The real dialog completes a name typed without extension; so does this one.
    const auto rows = parseFileFilter(request.filter);
    const int index = choice->filterIndex;
    const FileFilter* row = index >= 1 && index <= static_cast<int>(rows.size()) ? &rows[index - 1] : nullptr;
    return FileChoice{withDefaultExtension(choice->fileName, row, request.defaultExtension), index};
}

}  // namespace zorfa::platform
