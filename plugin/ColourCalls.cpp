// Operations on the pen colours, the wells and the gradients.
#include <QDBusArgument>
#include <vector>

#include "colour/Gradient.h"
#include "colour/Gradients.h"
#include "colour/Pickers.h"
#include "core/framework/AppState.h"
#include "core/framework/vb.h"
#include "core/frame/Form2.h"
#include "plugin/Calls.h"

namespace Automation {
namespace {
constexpr int GradientElements = GradientSteps * 3;

// The whole numbers of an array the caller put in a variant: ay, ai, au, an or aq.
std::vector<int64_t> Numbers(const QVariant& v, const char* what) {
    std::vector<int64_t> out;
    if (v.metaType().id() == QMetaType::QByteArray) {
        for (char c : v.toByteArray()) out.push_back(static_cast<uint8_t>(c));
        return out;
    }
    if (!v.canConvert<QDBusArgument>()) Refuse(std::string(what) + " must be a variant holding an array of integers.");
    const QDBusArgument arg = v.value<QDBusArgument>();
    const QString sig = arg.currentSignature();
    auto read = [&](auto sample) {
        arg.beginArray();
        while (!arg.atEnd()) {
            decltype(sample) n{};
            arg >> n;
            out.push_back(n);
        }
        arg.endArray();
    };
    if (sig == "ai") read(int{});
    else if (sig == "au") read(uint{});
    else if (sig == "an") read(short{});
    else if (sig == "aq") read(ushort{});
    else Refuse(std::string(what) + " must be an array of integers, not " + sig.toStdString() + ".");
    return out;
}

int GradientArg(const Call& c, int i) {
    const int index = ArgInt16(c, i);
    if (index < 0 || index > 7) Refuse("The gradient index " + std::to_string(index) + " lies outside 0..7.");
    return index;
}
}  // namespace

QVariant Kel_GetWells(Call&) {
    QList<int> wells;
    for (int i = 0; i < Form2::WellCount; ++i) wells.push_back(static_cast<int>(Form2::Well(i).Color.get()));
    return Variant(QVariant::fromValue(wells));
}

QVariant Kel_SetWells(Call& c) {
    const std::vector<int64_t> n = Numbers(ArgVariant(c, 0), "NewWells");
    if (n.size() != static_cast<size_t>(Form2::WellCount))
        Refuse("NewWells has " + std::to_string(n.size()) + " elements; the wells are " +
               std::to_string(Form2::WellCount) + ".");
    for (size_t i = 0; i < n.size(); ++i)
        if (n[i] < 0 || n[i] > 0xFFFFFF)
            Refuse("NewWells(" + std::to_string(i) + ") = " + std::to_string(n[i]) +
                   " is not a colour (0..&HFFFFFF, red in the low byte).");
    for (int i = 0; i < Form2::WellCount; ++i) Form2::Well(i).Color = static_cast<uint32_t>(n[i]);
    return {};
}

QVariant Kel_GetGradientIndex(Call&) { return static_cast<short>(App.GradientIndex); }

// The gradient selected by the user, whatever index is asked for.
QVariant Kel_GetGradient(Call& c) {
    GradientArg(c, 0);
    QByteArray bytes(GradientElements, '\0');
    for (int ch = 0; ch < 3; ++ch)
        for (int i = 0; i < GradientSteps; ++i)
            bytes[ch * GradientSteps + i] = static_cast<char>(Grad(i, ch, App.GradientIndex));
    return Variant(bytes);
}

QVariant Kel_SetGradient(Call& c) {
    const int index = GradientArg(c, 1);
    const std::vector<int64_t> n = Numbers(ArgVariant(c, 0), "NewGradient");
    if (n.size() != static_cast<size_t>(GradientElements))
        Refuse("NewGradient has " + std::to_string(n.size()) + " elements; a gradient is 256 by 3 = " +
               std::to_string(GradientElements) + ".");
    // Stores truncate to the low byte, as the 32-bit values are put into bytes.
    for (int ch = 0; ch < 3; ++ch)
        for (int i = 0; i < GradientSteps; ++i)
            Grad(i, ch, index) = static_cast<uint8_t>(n[static_cast<size_t>(ch * GradientSteps + i)] & 0xFF);
    Gradient::Picture2_Paint();
    return {};
}

QVariant Kel_SetPrimaryColor(Call& c) {
    SetPrimaryColour(vb::RGB(ArgByte(c, 0), ArgByte(c, 1), ArgByte(c, 2)));
    return {};
}

QVariant Kel_SetSecondaryColor(Call& c) {
    Form2::Shape1.FillColor = vb::RGB(ArgByte(c, 0), ArgByte(c, 1), ArgByte(c, 2));
    return {};
}

QVariant Kel_GetPrimaryColor(Call&) { return static_cast<int>(Form2::Shape4.FillColor.get() & 0xFFFFFF); }
QVariant Kel_GetSecondaryColor(Call&) { return static_cast<int>(Form2::Shape1.FillColor.get() & 0xFFFFFF); }

}  // namespace Automation
