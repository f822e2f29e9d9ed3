// What there is to choose among the streaming settings, and what each choice
// comes to.
#pragma once

#include <QObject>

// The singleton StreamingChoices of QML, module ORBManager 1.0. The numbers are
// those that the controller's properties and the files hold. Any thread.
class StreamingChoices : public QObject
{
    Q_OBJECT

public:
    enum Definition { Smooth, Standard, High, Custom };
    Q_ENUM(Definition)
    enum FrameRate { Hz72, Hz90 };
    Q_ENUM(FrameRate)
    // From what every card can encode to what the fewest can.
    enum Encoder { H264, Hevc, HevcTenBit, Av1 };
    Q_ENUM(Encoder)

    // What a definition that is not the user's own stands for.
    struct Preset
    {
        int bitRate;        // Mbit/s
        double scale;       // 1.0: the headset's own resolution
        double scaleD3H264; // the same for D3 with H.264, which cannot carry all of it
    };

    using QObject::QObject;

    // Null for Custom and for a number that is no definition.
    static const Preset *preset(int definition);

    // Mbit/s; 0 for Custom and for a number that is no definition.
    Q_INVOKABLE static int bitRate(int definition);
    // 90 for Hz90, 72 for any other number.
    Q_INVOKABLE static int hertz(int frameRate);
    // The last encoder to offer: those before it are offered as well.
    Q_INVOKABLE static int lastEncoder(bool av1Available, bool nvidiaAvailable);
};
