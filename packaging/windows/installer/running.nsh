; Whether the program runs, and how it is closed: by a request to its window, as
; the task bar makes one, so that it leaves SteamVR and the settings in order.

!macro runningFunctions UN
    ; $0: 1 when somebody runs the program of $INSTDIR, in whatever session: Windows
    ; lets nobody write to a program that runs. It may also be held for a moment by
    ; who looks for viruses.
    Function ${UN}isRunning
        Push $1
        Push $2
        StrCpy $2 0
    again:
        StrCpy $0 0
        ${If} ${FileExists} "$INSTDIR\${PROGRAM}.exe"
            ; GENERIC_WRITE, shared with everybody, OPEN_EXISTING
            System::Call 'kernel32::CreateFileW(w "$INSTDIR\${PROGRAM}.exe", i 0x40000000, i 7, p 0, i 3, i 0, p 0) p .r1 ?e'
            Pop $0
            ${If} $1 P<> -1
                System::Call 'kernel32::CloseHandle(p r1)'
                StrCpy $0 0
            ${ElseIf} $0 = 32 ; ERROR_SHARING_VIOLATION
                StrCpy $0 1
            ${Else}
                StrCpy $0 0
            ${EndIf}
        ${EndIf}
        IntOp $2 $2 + 1
        ${If} $0 = 1
        ${AndIf} $2 < 3
            Sleep 200
            Goto again
        ${EndIf}
        Pop $2
        Pop $1
    FunctionEnd

    ; $0: how many windows of the program can be seen. Each that belongs to no other
    ; one is asked to close when $9 is 1.
    Function ${UN}windowsOfProgram
        Push $1
        Push $2
        Push $3
        Push $4
        Push $5
        StrCpy $1 0
        StrCpy $5 0
    next:
        System::Call 'user32::FindWindowExW(p 0, p r1, p 0, p 0) p .r1'
        ${If} $1 P<> 0
            System::Call 'user32::IsWindowVisible(p r1) i .r2'
            System::Call 'user32::GetWindow(p r1, i 4) p .r3'
            ${If} $2 <> 0
            ${AndIf} $3 P= 0
                System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r2)'
                ; PROCESS_QUERY_LIMITED_INFORMATION
                System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r2) p .r3'
                StrCpy $4 ""
                ${If} $3 P<> 0
                    System::Call 'kernel32::QueryFullProcessImageNameW(p r3, i 0, w .r4, *i ${NSIS_MAX_STRLEN})'
                    System::Call 'kernel32::CloseHandle(p r3)'
                ${EndIf}
                ${If} $4 == "$INSTDIR\${PROGRAM}.exe"
                    IntOp $5 $5 + 1
                    ${If} $9 = 1
                        ; WM_SYSCOMMAND, SC_CLOSE
                        System::Call 'user32::PostMessageW(p r1, i 0x112, p 0xF060, p 0)'
                    ${EndIf}
                ${EndIf}
            ${EndIf}
            Goto next
        ${EndIf}
        StrCpy $0 $5
        Pop $5
        Pop $4
        Pop $3
        Pop $2
        Pop $1
    FunctionEnd

    ; Waits until the program has ended, $8 seconds at most; $0 as of isRunning.
    Function ${UN}waitForEnd
        Push $1
        System::Call 'kernel32::GetTickCount64() l .r1'
        IntOp $8 $8 * 1000
        System::Int64Op $1 + $8
        Pop $8
        ${Do}
            Call ${UN}isRunning
            ${If} $0 = 0
                ${Break}
            ${EndIf}
            Sleep 250
            System::Call 'kernel32::GetTickCount64() l .r1'
            System::Int64Op $1 < $8
            Pop $1
        ${LoopWhile} $1 = 1
        Pop $1
    FunctionEnd

    ; Goes on when the program does not run (any more). One without a window is on
    ; its way to the end already: it may just have started this installer.
    Function ${UN}closeProgram
        Call ${UN}isRunning
        ${If} $0 = 0
            Return
        ${EndIf}
        StrCpy $9 0
        Call ${UN}windowsOfProgram
        ${If} $0 = 0
            StrCpy $8 20
            Call ${UN}waitForEnd
            ${If} $0 = 0
                Return
            ${EndIf}
        ${EndIf}
        ${If} ${Silent}
            ${Refuse} "$(Runs)" ${EXIT_RUNNING}
        ${EndIf}
        MessageBox MB_OKCANCEL|MB_ICONQUESTION "$(MayBeClosed)" IDOK close
        SetErrorLevel ${EXIT_RUNNING}
        Abort
    close:
        StrCpy $9 1
        Call ${UN}windowsOfProgram
        StrCpy $8 40
        Call ${UN}waitForEnd
        ${If} $0 = 0
            Return
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRuns)" IDRETRY close
        SetErrorLevel ${EXIT_RUNNING}
        Abort
    FunctionEnd
!macroend
!insertmacro runningFunctions ""
