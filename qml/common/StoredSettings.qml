import QtQml 2.15
import ORBManager 1.0

// The streaming settings of the current headset as the controller had them when
// they were read().
QtObject {
    property int definition
    property int fps
    property int encoder
    property bool audio
    property int scale // percent
    property int bitRate // Mbit/s

    function frameRate() {
        return orb.fpsIndex === StreamingChoices.Hz90 ? StreamingChoices.Hz90
                                                      : StreamingChoices.Hz72;
    }
    function read() {
        definition = orb.definitionIndex;
        fps = frameRate();
        encoder = orb.encodeType;
        audio = orb.audioStatus;
        scale = orb.videoRatio;
        bitRate = orb.bitRate;
    }
    // Whether the controller has others by now.
    function isOutdated() {
        return definition !== orb.definitionIndex || fps !== frameRate()
            || encoder !== orb.encodeType || audio !== orb.audioStatus
            || scale !== orb.videoRatio || bitRate !== orb.bitRate;
    }
}
