// The scripted host and the shared set-up of logic tests.
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <chrono>

#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "core/document/CanvasSize.h"
#include "core/display/Display.h"
#include "core/framework/controls.h"

struct ScriptedHost::Program {
    QProcess process;
    std::string errorText;  // gathered as it is read
    std::optional<ProgramExit> faked;
};

namespace {
Host* installed = nullptr;
// Numbers stay unique across hosts, so that a program left behind by one test
// is never taken for another's.
ProgramId lastProgram = 0;
}  // namespace

ScriptedHost::ScriptedHost() {
    previous_ = installed;
    installed = this;
    SetHost(this);
}

ScriptedHost::~ScriptedHost() {
    EXPECT_TRUE(script_.empty()) << "dialogs expected but never shown, next: " << (script_.empty() ? "" : script_.front().form);
    installed = previous_;
    SetHost(previous_);
}

void ScriptedHost::Expect(const std::string& formName, std::function<void()> action) {
    script_.push_back({formName, std::move(action)});
}

void ScriptedHost::Press(const std::string& formName, const std::string& button) {
    Expect(formName, [formName, button] {
        Form* f = FindForm(formName);
        ASSERT_NE(f, nullptr);
        auto* b = dynamic_cast<CommandButton*>(f->find(button));
        ASSERT_NE(b, nullptr) << formName << " has no button " << button;
        b->press();
    });
}

void ScriptedHost::ExpectMessage(const std::string& fragment) {
    Expect("MessageBox", [fragment] {
        std::string text = MessageBox::Label1.Caption;
        EXPECT_NE(text.find(fragment), std::string::npos) << "message was: " << text;
        MessageBox::Command1.press();
    });
}

void ScriptedHost::Answer(const std::string& fragment, int answer) {
    Expect("QuestionBox", [fragment, answer] {
        std::string text = QuestionBox::Label1.Caption;
        EXPECT_NE(text.find(fragment), std::string::npos) << "question was: " << text;
        (answer == 1 ? QuestionBox::Command1 : QuestionBox::Command2).press();
    });
}

void ScriptedHost::AnswerSize(int w, int h) {
    Expect("CanvasSize", [w, h] {
        CanvasSize::Text1.Text = std::to_string(w);
        CanvasSize::Text2.Text = std::to_string(h);
        CanvasSize::Command1.press();
    });
}

void ScriptedHost::ShowForm(Form& f, bool modal, Form*) {
    shown.push_back(f.Name);
    if (!modal) return;
    if (f.Name == "MessageBox") messages.push_back(MessageBox::Label1.Caption);
    if (f.Name == "QuestionBox") questions.push_back(QuestionBox::Label1.Caption);
    if (script_.empty() || script_.front().form != f.Name) {
        std::string text = f.Name == "MessageBox" ? MessageBox::Label1.Caption.get()
                           : f.Name == "QuestionBox" ? QuestionBox::Label1.Caption.get() : std::string();
        ADD_FAILURE() << "unexpected modal " << f.Name << (text.empty() ? "" : ": " + text)
                      << (script_.empty() ? "" : " (expected " + script_.front().form + ")");
        f.Visible = false;
        return;
    }
    Step step = std::move(script_.front());
    script_.pop_front();
    step.action();
    if (f.Visible) {
        ADD_FAILURE() << "modal " << f.Name << " still shown after its scripted answer";
        f.Visible = false;
    }
}

CanvasSurface ScriptedHost::GetCanvasSurface() {
    if (surface) return *surface;
    CanvasSurface s;
    s.Width = std::min(canvasWidth, 2048);
    s.Height = std::min(canvasHeight, 2048);
    s.OriginX = originX;
    s.OriginY = originY;
    return s;
}

void ScriptedHost::ScrollCanvasTo(int x, int y) {
    CanvasSurface s = GetCanvasSurface();
    x = std::clamp(x, 0, std::max(0, canvasWidth - s.Width));
    y = std::clamp(y, 0, std::max(0, canvasHeight - s.Height));
    if (surface) {
        surface->OriginX = x;
        surface->OriginY = y;
    }
    originX = x;
    originY = y;
}

std::optional<std::string> ScriptedHost::OpenFileDialog(FileDialogRequest& dialog) {
    if (openFilter) dialog.FilterIndex = openFilter;
    if (openFiles.empty()) {
        ADD_FAILURE() << "unexpected open-file dialog";
        return std::nullopt;
    }
    auto r = openFiles.front();
    openFiles.pop_front();
    return r;
}

std::optional<std::string> ScriptedHost::SaveFileDialog(FileDialogRequest&) {
    if (saveFiles.empty()) {
        ADD_FAILURE() << "unexpected save-file dialog";
        return std::nullopt;
    }
    auto r = saveFiles.front();
    saveFiles.pop_front();
    return r;
}

std::optional<uint32_t> ScriptedHost::ChooseColor(uint32_t) {
    if (colours.empty()) {
        ADD_FAILURE() << "unexpected colour dialog";
        return std::nullopt;
    }
    auto r = colours.front();
    colours.pop_front();
    return r;
}

bool ScriptedHost::OpenDocument(const std::string& path) {
    documentsOpened.push_back(path);
    return documentOpens;
}

ScriptedHost::Program* ScriptedHost::program(ProgramId id) {
    auto it = programs_.find(id);
    return it == programs_.end() ? nullptr : it->second.get();
}

ProgramId ScriptedHost::StartProgram(const std::string& name, const std::vector<std::string>& arguments) {
    programsStarted.push_back({name});
    programsStarted.back().insert(programsStarted.back().end(), arguments.begin(), arguments.end());
    auto p = std::make_unique<Program>();
    if (auto fake = fakePrograms.find(name); fake != fakePrograms.end()) {
        p->faked = fake->second;
        programs_[++lastProgram] = std::move(p);
        return lastProgram;
    }
    p->process.setStandardOutputFile(QProcess::nullDevice());
    QStringList args;
    for (const std::string& a : arguments) args << QString::fromStdString(a);
    p->process.start(QString::fromStdString(name), args);
    if (!p->process.waitForStarted(10000)) return 0;
    programs_[++lastProgram] = std::move(p);
    return lastProgram;
}

// No event loop runs here: a look at the process brings its state up to date.
bool ScriptedHost::ProgramRunning(ProgramId id) {
    Program* p = program(id);
    return p && !p->faked && p->process.state() != QProcess::NotRunning && !p->process.waitForFinished(0);
}

bool ScriptedHost::WaitForProgram(ProgramId id, int milliseconds) {
    Program* p = program(id);
    if (!p || p->process.state() == QProcess::NotRunning) return true;
    const auto t0 = std::chrono::steady_clock::now();
    const bool ended = p->process.waitForFinished(milliseconds);
    clock += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    return ended;
}

ProgramExit ScriptedHost::ProgramResult(ProgramId id) {
    Program* p = program(id);
    if (!p) return {};
    if (p->faked) return *p->faked;
    p->errorText += p->process.readAllStandardError().toStdString();
    return {p->process.exitStatus() == QProcess::NormalExit, p->process.exitCode(), p->errorText};
}

void ScriptedHost::KillProgram(ProgramId id) {
    if (Program* p = program(id)) p->process.kill();
}

void ScriptedHost::ReleaseProgram(ProgramId id) { programs_.erase(id); }

long ScriptedHost::ProgramProcessId(ProgramId id) {
    Program* p = program(id);
    return p && !p->faked ? static_cast<long>(p->process.processId()) : 0;
}

void ScriptedHost::WhenProgramEnds(ProgramId id, std::function<void()> ended) {
    if (Program* p = program(id); p && !p->faked)
        QObject::connect(&p->process, &QProcess::finished, &p->process,
                         [ended = std::move(ended)](int, QProcess::ExitStatus) { ended(); });
}

std::optional<std::string> ScriptedHost::ProgramOutput(const std::string& name,
                                                       const std::vector<std::string>& arguments, int milliseconds) {
    programsStarted.push_back({name});
    programsStarted.back().insert(programsStarted.back().end(), arguments.begin(), arguments.end());
    if (auto fake = fakeOutputs.find(name); fake != fakeOutputs.end()) return fake->second;
    QProcess p;
    QStringList args;
    for (const std::string& a : arguments) args << QString::fromStdString(a);
    p.start(QString::fromStdString(name), args);
    if (!p.waitForStarted(10000) || !p.waitForFinished(milliseconds)) return std::nullopt;
    return p.readAllStandardOutput().toStdString();
}

void MakeTestDocument(int w, int h) {
    SetBufferSize(w, h);
    ASSERT_TRUE(CreateNewDocument(false));
    DemensionRefreshBuff();
}

std::optional<FontChoice> ScriptedHost::ChooseFont(const FontChoice&) {
    if (fonts.empty()) return std::nullopt;
    auto f = fonts.front();
    fonts.pop_front();
    return f;
}

int ScriptedHost::TextWidth(const std::string& text, const FontChoice& font) {
    return font.Name.empty() ? -1 : 6 * static_cast<int>(text.size());
}

bool ScriptedHost::RasteriseText(const std::string& text, const FontChoice& font, int width, int height,
                                 std::vector<uint8_t>& pixels) {
    if (font.Name.empty() || width <= 0 || height <= 0) return false;
    pixels.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 255);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ') continue;
        for (int y = 1; y < 8 && y < height; ++y)
            for (int x = static_cast<int>(6 * i) + 1; x < static_cast<int>(6 * i) + 5 && x < width; ++x)
                pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)] = 0;
    }
    return true;
}

uint32_t* ScriptedHost::OpenSurface(PictureBox& box, int width, int height) {
    if (refuseSurfaces || width <= 0 || height <= 0) return nullptr;
    auto& s = surfaces[&box];
    s.assign(static_cast<size_t>(width) * height, 0);
    return s.data();
}

void ScriptedHost::PresentSurface(PictureBox& box) {
    auto it = surfaces.find(&box);
    if (it == surfaces.end()) return;
    ++surfacePresents;
    box.pixels.assign(it->second.begin(), it->second.begin() + std::min(it->second.size(), box.pixels.size()));
    box.Refresh();
}

void ScriptedHost::CloseSurface(PictureBox& box) { surfaces.erase(&box); }
