;;; kdx-mode.el --- Editing KDX texts  -*- lexical-binding: t -*-

;; Version: 1.0.0
;; Package-Requires: ((emacs "27.1"))

;;; Commentary:

;; Colours and indentation for KDX texts.  With eglot, `kdx lsp' adds problems, layout, outline and
;; renaming: M-x eglot, or (add-hook 'kdx-mode-hook #'eglot-ensure).

;;; Code:

(defvar eglot-server-programs)

(defconst kdx--blanks "[ \t\v\f\r]*")
(defconst kdx--object (concat "^" kdx--blanks "\\([A-Za-z0-9 &._]*\\):"))
(defconst kdx--parameter (concat "^" kdx--blanks "\\([A-Za-z0-9 &._]*\\)="))
(defconst kdx--end (concat "^" kdx--blanks "\\(END\\)" kdx--blanks "\\(?:#.*\\)?$"))
(defconst kdx--continued (concat "\\\\\\(?: " kdx--blanks "\\)?$"))

(defun kdx--beginning-of-statement ()
  "Go to the first line of the statement around point."
  (forward-line 0)
  (while (and (not (bobp))
              (save-excursion (forward-line -1) (looking-at-p (concat ".*" kdx--continued))))
    (forward-line -1)))

(defun kdx--end-of-statement ()
  "Go to the end of the last line of the statement around point."
  (while (and (looking-at-p (concat ".*" kdx--continued)) (zerop (forward-line 1))))
  (end-of-line))

(defun kdx--comment-begin (begin end)
  "Where the comment of the statement from BEGIN to END starts, or END."
  (goto-char begin)
  (cond ((looking-at-p (concat kdx--blanks "!")) end)
        ((not (search-forward "#" end t)) end)
        ((eq (char-before (1- (point))) ?\\) end)
        (t (1- (point)))))

(defun kdx--face-spans (begin comment)
  "The faces of a statement from BEGIN to its COMMENT: a list of (BEGIN END FACE)."
  (goto-char begin)
  (cond ((looking-at kdx--end)
         `((,(match-beginning 1) ,(match-end 1) font-lock-keyword-face)))
        ((looking-at (concat kdx--blanks "[!$]")) `((,begin ,comment font-lock-preprocessor-face)))
        ((looking-at (concat kdx--blanks ">")) `((,begin ,comment font-lock-function-name-face)))
        ((and (looking-at kdx--object) (<= (match-end 0) comment))
         `((,(match-beginning 1) ,(match-end 1) font-lock-type-face)
           (,(match-end 0) ,comment font-lock-variable-name-face)))
        ((and (looking-at kdx--parameter) (<= (match-end 0) comment))
         `((,(match-beginning 1) ,(match-end 1) font-lock-constant-face)
           (,(match-end 0) ,comment font-lock-string-face)))
        (t `((,begin ,comment font-lock-warning-face)))))

(defun kdx--fontify (limit)
  "Fontify the statements from point to LIMIT."
  (kdx--beginning-of-statement)
  (while (< (point) limit)
    (let* ((begin (point))
           (end (progn (kdx--end-of-statement) (point)))
           (comment (kdx--comment-begin begin end)))
      (dolist (span (kdx--face-spans begin comment))
        (put-text-property (nth 0 span) (nth 1 span) 'face (nth 2 span)))
      (put-text-property comment end 'face 'font-lock-comment-face)
      (goto-char end)
      (forward-line 1)
      (when (eobp) (setq limit (point)))))
  nil)

(defun kdx-indent-line ()
  "Indent the line by the nesting of objects."
  (interactive)
  (let ((closes (save-excursion (forward-line 0) (looking-at-p kdx--end)))
        (level 0))
    (save-excursion
      (forward-line 0)
      (let ((continues (and (not (bobp))
                            (save-excursion (forward-line -1)
                                            (looking-at-p (concat ".*" kdx--continued))))))
        (unless (bobp)
          (skip-chars-backward " \t\r\n")
          (kdx--beginning-of-statement)
          (setq level (current-indentation))
          (when (or continues (looking-at-p kdx--object)) (setq level (+ level 2))))))
    (when closes (setq level (- level 2)))
    (if (<= (current-column) (current-indentation))
        (indent-line-to (max 0 level))
      (save-excursion (indent-line-to (max 0 level))))))

;;;###autoload
(define-derived-mode kdx-mode prog-mode "KDX"
  "Major mode for KDX texts."
  (setq-local comment-start "# ")
  (setq-local comment-start-skip "#+[ \t]*")
  (setq-local indent-tabs-mode nil)
  (setq-local indent-line-function #'kdx-indent-line)
  (setq-local font-lock-defaults '(((kdx--fontify)) t)))

;;;###autoload
(add-to-list 'auto-mode-alist '("\\.kdx\\'" . kdx-mode))

(with-eval-after-load 'eglot
  (add-to-list 'eglot-server-programs '(kdx-mode . ("kdx" "lsp"))))

(provide 'kdx-mode)
;;; kdx-mode.el ends here
