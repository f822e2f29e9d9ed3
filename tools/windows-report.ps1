# Collects what docs/ready-for-windows.md wants to know of a PC and a script can see, in one
# text file on the desktop. It changes nothing. Names of the user are replaced.
#
#   powershell -ExecutionPolicy Bypass -File windows-report.ps1 [-Folder C:\...\KOLM_Streaming_Assistant]

param([string]$Folder = '')

$report = New-Object System.Collections.Generic.List[string]
$ports = 9932, 9943, 9944, 50000, 50001, 5037

function Add-Section([string]$title, [scriptblock]$body) {
    $report.Add('')
    $report.Add("== $title")
    try {
        $text = & $body | Out-String -Width 200
        foreach ($line in $text -split "`r?`n") {
            if ($line.Trim()) { $report.Add($line.TrimEnd()) }
        }
    } catch {
        $report.Add("cannot be asked: $($_.Exception.Message)")
    }
}

Add-Section 'System' {
    Get-CimInstance Win32_OperatingSystem | Select-Object Caption, Version, BuildNumber, OSLanguage
    Get-CimInstance Win32_ComputerSystem | Select-Object Manufacturer, Model, TotalPhysicalMemory
    "session: $env:SESSIONNAME"
    "code page: $([System.Text.Encoding]::Default.CodePage), language: $((Get-UICulture).Name)"
}
Add-Section 'Graphics' {
    Get-CimInstance Win32_VideoController |
        Select-Object Name, DriverVersion, CurrentHorizontalResolution, CurrentVerticalResolution
}
Add-Section 'Sound' { Get-CimInstance Win32_SoundDevice | Select-Object Name, Status }
Add-Section 'Power' { Get-CimInstance Win32_Battery | Select-Object Name, BatteryStatus }
Add-Section 'Network' { Get-NetConnectionProfile | Select-Object InterfaceAlias, NetworkCategory }
Add-Section 'Proxy' {
    Get-ItemProperty 'HKCU:\Software\Microsoft\Windows\CurrentVersion\Internet Settings' |
        Select-Object ProxyEnable, ProxyServer, AutoConfigURL, AutoDetect
}
Add-Section 'Who has the ports' {
    Get-NetTCPConnection -ErrorAction SilentlyContinue |
        Where-Object { $ports -contains $_.LocalPort } |
        ForEach-Object {
            $owner = Get-Process -Id $_.OwningProcess -ErrorAction SilentlyContinue
            "$($_.LocalAddress):$($_.LocalPort) $($_.State) $($owner.ProcessName) $($_.OwningProcess)"
        }
}
Add-Section 'Processes of streaming' {
    Get-Process -ErrorAction SilentlyContinue |
        Where-Object { $_.ProcessName -match '^(steam|vr|adb|KOLM)' } |
        Select-Object ProcessName, Id, WorkingSet64, HandleCount, StartTime
}
Add-Section 'Steam' {
    Get-ItemProperty 'HKLM:\SOFTWARE\WOW6432Node\Valve\Steam' | Select-Object InstallPath
    Get-ItemProperty ('HKLM:\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\' +
        'Steam App 250820') | Select-Object InstallLocation
}
Add-Section 'OpenVR: list of drivers' {
    Get-Content -Encoding UTF8 (Join-Path $env:LOCALAPPDATA 'openvr\openvrpaths.vrpath')
}
Add-Section 'USB: headsets and phones' {
    Get-PnpDevice -PresentOnly | Where-Object { $_.InstanceId -match '^USB\\VID_(05C6|18D1)' } |
        Select-Object FriendlyName, Status, Class
}
if ($Folder) {
    Add-Section 'The program''s folder' {
        Get-ChildItem $Folder | Select-Object Name, Length, IsReadOnly
        Get-AuthenticodeSignature (Join-Path $Folder 'KOLM_Streaming_Assistant.exe') |
            Select-Object Status
    }
}
Add-Section 'The program''s files' {
    Get-ChildItem (Join-Path $env:LOCALAPPDATA 'KOLM\KOLM_Streaming_Assistant') -Recurse |
        Select-Object Name, Length, LastWriteTime, IsReadOnly
}
Add-Section 'The end of its last log' {
    Get-ChildItem (Join-Path $env:LOCALAPPDATA 'KOLM\KOLM_Streaming_Assistant\????-??-??.txt') |
        Sort-Object Name | Select-Object -Last 1 | Get-Content | Select-Object -Last 300
}

$home_ = [regex]::Escape($env:USERPROFILE)
$user = [regex]::Escape($env:USERNAME)
$machine = [regex]::Escape($env:COMPUTERNAME)
$text = ($report -join "`r`n") -replace $home_, '%USERPROFILE%' -replace "\b$user\b", 'USER' `
    -replace "\b$machine\b", 'PC'
$file = Join-Path ([Environment]::GetFolderPath('Desktop')) 'KOLM-report.txt'
[System.IO.File]::WriteAllText($file, $text, (New-Object System.Text.UTF8Encoding $true))
Write-Host "Written: $file"
