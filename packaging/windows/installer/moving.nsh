; From the folder of the new files to their places.

Var heldFile

; Puts the file or folder $1 into the place of $2, in one step and on the disk when
; it is done; $0: 0, or the error. Who looks for viruses may hold what is new.
Function move
    Push $3
    StrCpy $3 0
again:
    ; MOVEFILE_REPLACE_EXISTING, MOVEFILE_WRITE_THROUGH
    System::Call 'kernel32::MoveFileExW(w "$1", w "$2", i 9) i .r0 ?e'
    Exch $4
    Pop $4
    ${If} $0 = 0
        System::Call 'kernel32::GetFileAttributesW(w "$1") i .r4'
        ${If} $4 = -1
            StrCpy $0 2 ; it is not there
        ${Else}
            IntOp $3 $3 + 1
            ${If} $3 < 20
                Sleep 250
                Goto again
            ${EndIf}
            StrCpy $0 5
        ${EndIf}
    ${Else}
        StrCpy $0 0
    ${EndIf}
    Pop $3
FunctionEnd

Function failForHeldFile
    ${Fail} "$(Held)$\r$\n$heldFile" ${EXIT_HELD}
FunctionEnd

; The same, or the end of the installation: what was there still works.
Function moveOrFail
    Call move
    ${If} $0 <> 0
        StrCpy $heldFile $2
        Call failForHeldFile
    ${EndIf}
FunctionEnd

; Everything in the folder $1 into the folder $2, file by file; $0: 0, or the error.
; The program itself and its uninstaller stay behind.
Function moveTree
    Push $R0
    Push $R1
    StrCpy $0 0
    System::Call 'kernel32::CreateDirectoryW(w "$2", p 0)'
    FindFirst $R0 $R1 "$1\*.*"
    ${DoUntil} $R1 == ""
        ${If} $R1 != "."
        ${AndIf} $R1 != ".."
        ${AndIf} $R1 != "${PROGRAM}.exe"
        ${AndIf} $R1 != "uninstall.exe"
            Push $1
            Push $2
            StrCpy $1 "$1\$R1"
            StrCpy $2 "$2\$R1"
            ; A folder in one step, where there is none yet.
            ${If} ${FileExists} "$1\*.*"
            ${AndIf} ${FileExists} "$2\*.*"
                Call moveTree
            ${Else}
                Call move
                ${If} $0 <> 0
                    StrCpy $heldFile $2
                ${EndIf}
            ${EndIf}
            Pop $2
            Pop $1
            ${If} $0 <> 0
                ${Break}
            ${EndIf}
        ${EndIf}
        FindNext $R0 $R1
    ${Loop}
    FindClose $R0 ; whoever keeps it open cannot remove the folder
    Pop $R1
    Pop $R0
    ClearErrors
FunctionEnd

Function moveTreeOrFail
    Call moveTree
    ${If} $0 <> 0
        Call failForHeldFile
    ${EndIf}
FunctionEnd

; The libraries first, the program, which decides which of them are loaded, last.
Function putInPlace
    StrCpy $1 "$INSTDIR\${NEW_FILES}\${VERSION}"
    StrCpy $2 "$INSTDIR\${VERSION}"
    ${If} ${FileExists} "$2\*.*"
        Call moveTreeOrFail
    ${Else}
        Call moveOrFail
    ${EndIf}
    StrCpy $1 "$INSTDIR\${NEW_FILES}\uninstall.exe"
    StrCpy $2 "$INSTDIR\uninstall.exe"
    Call moveOrFail
    StrCpy $1 "$INSTDIR\${NEW_FILES}"
    StrCpy $2 $INSTDIR
    Call moveTreeOrFail
    StrCpy $1 "$INSTDIR\${NEW_FILES}\${PROGRAM}.exe"
    StrCpy $2 "$INSTDIR\${PROGRAM}.exe"
    Call moveOrFail
    RMDir /r "$INSTDIR\${NEW_FILES}"
    ClearErrors
FunctionEnd

; Takes away what the libraries of other versions lie in; that of this version is $R2.
; A folder loses its name first: whoever is interrupted knows it again by the new one.
!macro removeVersionsFunction UN
    Function ${UN}removeVersionsBut
        Push $R0
        Push $R1
        FindFirst $R0 $R1 "$INSTDIR\*.*"
        ${DoUntil} $R1 == ""
            ${If} $R1 != $R2
            ${AndIf} ${FileExists} "$INSTDIR\$R1\$R1.manifest"
                Rename "$INSTDIR\$R1" "$INSTDIR\${OLD_FILES}$R1"
                ; Somebody may hold a file of it.
                RMDir /r /REBOOTOK "$INSTDIR\$R1"
            ${EndIf}
            FindNext $R0 $R1
        ${Loop}
        FindClose $R0
        FindFirst $R0 $R1 "$INSTDIR\${OLD_FILES}*.*"
        ${DoUntil} $R1 == ""
            RMDir /r /REBOOTOK "$INSTDIR\$R1"
            FindNext $R0 $R1
        ${Loop}
        FindClose $R0
        Pop $R1
        Pop $R0
        ClearErrors
    FunctionEnd
!macroend
!insertmacro removeVersionsFunction ""

Function removeOldVersions
    StrCpy $R2 "${VERSION}"
    Call removeVersionsBut
FunctionEnd

; After a failure: what was there before, and nothing else.
Function takeBack
    SetOutPath $TEMP
    RMDir /r "$INSTDIR\${NEW_FILES}"
    ${If} $isUpgrade = 0
    ${AndIfNot} ${FileExists} "$INSTDIR\${PROGRAM}.exe"
        StrCpy $R2 ""
        Call removeVersionsBut
        Delete "$INSTDIR\uninstall.exe"
        Delete "$INSTDIR\*.qm"
        RMDir /r "$INSTDIR\guide"
        RMDir /r "$INSTDIR\licenses"
        RMDir $INSTDIR
        ReadRegStr $R3 HKLM "${UNINSTALL_KEY}" Above
        Call removeParents
        DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ${EndIf}
FunctionEnd

Function enterInRegistry
    WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation $INSTDIR
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayName "$(ProgramName)"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\${PROGRAM}.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" Publisher "KOLM"
    WriteRegStr HKLM "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" EstimatedSize ${SIZE}
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoRepair 1
    DeleteRegKey HKLM "${LEFT_KEY}"
    DeleteRegKey /ifempty HKLM "Software\KOLM"
FunctionEnd

; Shortcuts are named in the language of whoever installed; a later installation may
; speak another one. Calls the macro with the place and each of the names.
!macro eachName WHAT PLACE
    !insertmacro ${WHAT} "${PLACE}\${NAME_ENGLISH}.lnk"
    !insertmacro ${WHAT} "${PLACE}\${NAME_CHINESE}.lnk"
    !insertmacro ${WHAT} "${PLACE}\${NAME_JAPANESE}.lnk"
!macroend
!define NAME_ENGLISH "KOLM Streaming Assistant"
!define NAME_CHINESE "KOLM 串流助手"
!define NAME_JAPANESE "KOLM ストリーミングアシスタント"

!macro deleteShortcut FILE
    Delete "${FILE}"
!macroend
!macro countShortcut FILE
    ${If} ${FileExists} "${FILE}"
        IntOp $1 $1 + 1
    ${EndIf}
!macroend
!macro deleteUnlessOurs FILE
    ${If} "${FILE}" != "$SMPROGRAMS\$(ProgramName).lnk"
        Delete "${FILE}"
    ${EndIf}
!macroend

Function removeOtherNames
    !insertmacro eachName deleteUnlessOurs $SMPROGRAMS
FunctionEnd
