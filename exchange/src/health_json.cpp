// SPDX-License-Identifier: Apache-2.0
// The health of a drive as JSON.

#include <pi/exchange/model_json.h>
#include <pi/health_assessment.h>

#include "model_writer.h"

namespace PI {

static void Fields(CModelWriter& writer, const CHealthReason& reason) {
    const _HEALTH_FIGURE figure = reason.GetFigure().GetFigure();
    writer.Named("state", "state_name", reason.GetState(), DriveStateName);
    writer.Named("figure", "figure_name", figure, HealthFigureName);
    writer.Member("text", reason.GetText());
}

static void Fields(CModelWriter& writer, const CHealthFigure& figure) {
    writer.Named("figure", "figure_name", figure.GetFigure(), HealthFigureName);
    if (figure.HasValue()) {
        writer.Member("value", figure.GetValue());
    } else {
        writer.Null("value");
    }
    writer.Named("unit", "unit_name", figure.GetUnit(), FigureUnitName);
    writer.Named("direction", "direction_name", figure.GetDirection(), FigureDirectionName);
    writer.Named("state", "state_name", figure.GetState(), FigureStateName);
    writer.Named("source", "source_name", figure.GetSource(), FigureSourceName);
    writer.Member("source_number", figure.GetSourceNumber());
    writer.Member("text", figure.GetText());
}

std::string ToJson(const CDriveHealth& health) {
    const CHealthAssessment assessment(health);
    CModelWriter writer;
    writer.Begin("drive_health");
    writer.Named("state", "state_name", assessment.GetState(), DriveStateName);
    writer.Member("reasons", assessment.GetReasons());
    writer.Member("figures", assessment.GetFigures());
    return writer.End();
}

}  // namespace PI
