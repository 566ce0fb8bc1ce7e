#include "sim/link_faults.h"

namespace kal::sim {

AnswerFault LinkFaults::take()
{
    if (answer == AnswerFault::None || answerCount == 0)
        return AnswerFault::None;
    const AnswerFault f = answer;
    if (answerCount > 0 && --answerCount == 0)
        answer = AnswerFault::None;
    return f;
}

QByteArray LinkFaults::spoil(AnswerFault f, QByteArray answer) const
{
    if (f == AnswerFault::Short)
        return answer.left(shortLength);
    if (f == AnswerFault::Oversize && answer.size() < oversizeLength)
        answer.append(QByteArray(oversizeLength - answer.size(), '\0'));
    return answer;
}

void LinkControl::dropLink()
{
    if (faults.down)
        return;
    faults.down = true;
    Q_EMIT downChanged(true);
}

void LinkControl::setAnswerFault(AnswerFault f, int count)
{
    faults.answer = f;
    faults.answerCount = f == AnswerFault::None ? -1 : count;
}

void LinkControl::resume()
{
    // The shapes of the faults (lengths, exception code) stay for the next time.
    const bool wasDown = faults.down;
    faults.down = false;
    faults.delayMs = 0;
    faults.answer = AnswerFault::None;
    faults.answerCount = -1;
    if (wasDown)
        Q_EMIT downChanged(false);
}

} // namespace kal::sim
