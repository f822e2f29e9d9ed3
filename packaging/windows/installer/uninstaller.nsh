; The uninstaller: uninstall.exe [/S] [/REMOVE-SETTINGS] [/LOG=FILE]
; It first has the program give back what it changed of others, then takes away what
; the installer brought, and leaves what others have put beside it.

!insertmacro writeLogFunction "un."
!insertmacro runningFunctions "un."
!insertmacro removeVersionsFunction "un."
!insertmacro removeParentsFunction "un."

Var removeSettings

Function un.onInit
    SetShellVarContext all
    SetRegView 64
    Call un.takeTurn
    !insertmacro chooseLanguage
    ${GetParameters} $R0
    StrCpy $removeSettings 0
    ClearErrors
    ${GetOptions} $R0 "/REMOVE-SETTINGS" $R1
    ${Unless} ${Errors}
        StrCpy $removeSettings 1
    ${EndUnless}
    ClearErrors
    Call un.closeProgram
    ${IfNot} ${Silent}
        MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(AlsoSettings)" IDNO keep
        StrCpy $removeSettings 1
    keep:
    ${EndIf}
FunctionEnd

; Of the registrations, settings and forwards that the program keeps a record of.
Function un.giveBack
    StrCpy $1 0
again:
    ClearErrors
    SetOutPath $INSTDIR
    ExecWait '"$INSTDIR\${PROGRAM}.exe" --give-back' $0
    SetOutPath $TEMP
    ${If} ${Errors}
        ClearErrors
        Return ; there is no program that could
    ${EndIf}
    ${If} $0 = 0
        Return
    ${EndIf}
    IntOp $1 $1 + 1
    ${If} $1 < 5
        Sleep 500
        Goto again
    ${EndIf}
    ${If} ${Silent}
        ${Refuse} "$(NotGivenBack)" ${EXIT_NOT_GIVEN_BACK}
    ${EndIf}
    MessageBox MB_ABORTRETRYIGNORE|MB_ICONEXCLAMATION "$(NotGivenBack)" IDRETRY again IDIGNORE goOn
    SetErrorLevel ${EXIT_NOT_GIVEN_BACK}
    Quit
goOn:
FunctionEnd

Section "un.program"
    Call un.closeProgram
    Call un.giveBack
    !insertmacro eachName deleteShortcut $SMPROGRAMS
    !insertmacro eachName deleteShortcut $DESKTOP
    !insertmacro eachName deleteShortcut $SMSTARTUP
    ; The program first: without it nothing looks for the rest.
    Delete /REBOOTOK "$INSTDIR\${PROGRAM}.exe"
    StrCpy $R2 ""
    Call un.removeVersionsBut
    Call un.removeSupplies
    Delete /REBOOTOK "$INSTDIR\japanese.qm"
    Delete /REBOOTOK "$INSTDIR\chinese.qm"
    Delete /REBOOTOK "$INSTDIR\compare.json"
    Delete /REBOOTOK "$INSTDIR\sbom.spdx.json"
    RMDir /r /REBOOTOK "$INSTDIR\guide"
    RMDir /r /REBOOTOK "$INSTDIR\licenses"
    RMDir /r /REBOOTOK "$INSTDIR\${NEW_FILES}"
    ${If} $removeSettings = 1
        Call un.removeData
    ${EndIf}
    Delete /REBOOTOK "$INSTDIR\uninstall.exe"
    ReadRegStr $R3 HKLM "${UNINSTALL_KEY}" Above
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    RMDir $INSTDIR
    Call un.removeParents
    ${If} ${FileExists} "$INSTDIR\*.*"
        ; Others have files there. The folder stays as it is, nobody but an
        ; administrator may write to it, and we may come back.
        WriteRegStr HKLM "${LEFT_KEY}" LeftIn $INSTDIR
        WriteRegStr HKLM "${LEFT_KEY}" Above $R3
    ${EndIf}
    SetErrorLevel ${EXIT_DONE}
SectionEnd

; What the packager has supplied, and nothing that others have put beside it.
Function un.removeSupplies
    ${If} ${FileExists} "$INSTDIR\ADB\adb.exe"
        nsExec::Exec '"$INSTDIR\ADB\adb.exe" kill-server'
        Pop $0
    ${EndIf}
    !ifdef HAS_ADB
        RMDir /r /REBOOTOK "$INSTDIR\ADB"
    !endif
    !ifdef HAS_INSTALLAUDIO
        RMDir /r /REBOOTOK "$INSTDIR\installaudio"
    !endif
FunctionEnd

; Settings, sessions and logs of whoever uninstalls. His folders are his own: nothing
; is followed that leads out of them, and only what the program names is taken.
Function un.removeData
    SetShellVarContext current
    StrCpy $0 "$LOCALAPPDATA\KOLM\${PROGRAM}"
    SetShellVarContext all
    Call un.isPlainFolder
    ${If} $1 = 0
        Return
    ${EndIf}
    Delete "$0\*.txt"
    Delete "$0\*.json"
    Delete "$0\*.jsonl"
    Delete "$0\*.bad"
    Delete "$0\setting.inf"
    Delete "$0\opengl.trial"
    Push $0
    StrCpy $0 "$0\download"
    Call un.isPlainFolder
    ${If} $1 = 1
        Delete "$0\*.exe"
        Delete "$0\*.msi"
        RMDir $0
    ${EndIf}
    Pop $0
    RMDir $0
    ${GetParent} $0 $0
    RMDir $0
    ; What Qt keeps of its drawing, together with other programs: it makes it anew.
    ${GetParent} $0 $0
    StrCpy $0 "$0\cache\qtshadercache-x86_64-little_endian-llp64"
    Call un.isPlainFolder
    ${If} $1 = 1
        Delete "$0\*.*"
        RMDir $0
        ${GetParent} $0 $0
        RMDir $0
    ${EndIf}
FunctionEnd

; $1: 1 when $0 is a folder and no link.
Function un.isPlainFolder
    System::Call 'kernel32::GetFileAttributesW(w "$0") i .r1'
    ${If} $1 = -1
        StrCpy $1 0
        Return
    ${EndIf}
    IntOp $1 $1 & 0x410 ; FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_REPARSE_POINT
    ${If} $1 = 0x10
        StrCpy $1 1
    ${Else}
        StrCpy $1 0
    ${EndIf}
FunctionEnd
